#include "transfer/kermit/kermit_sender.h"

#include <algorithm>
#include <utility>

#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::size_t kPiece = 65536;
constexpr std::size_t kPlenty = 32768;  // no packet takes more

}  // namespace

std::function<std::string()> piecesOf(std::shared_ptr<ByteSource> source) {
    return [source = std::move(source)] {
        std::string piece(kPiece, '\0');
        piece.resize(source->read(piece));
        return piece;
    };
}

TransferCode KermitSender::begin(const KermitParameters& ours, char header, std::string_view name) {
    KermitPacket answer;
    TransferCode code = request('S', encodeParameters(ours), answer);
    if (code != TransferCode::kSuccess) return code;
    peer_ = parseParameters(answer.data);
    agreement_ = link_.settle(ours, peer_);
    // The length of a short packet counts its sequence number and its type.
    const int notData = agreement_.blockCheck + (peer_.packetLength > kShortPacket ? 0 : 2);
    room_ = static_cast<std::size_t>(std::min(peer_.packetLength, ours.packetLength) - notData);
    code = request(header, encodeWhole(name, agreement_.sending), answer);
    return code == TransferCode::kUserBreak && link_.peerBrokeOff() ? TransferCode::kFileOpenError
                                                                    : code;
}

TransferCode KermitSender::describe(std::uint64_t size) {
    if (!peer_.attributes) return TransferCode::kSuccess;
    const std::string length = std::to_string(size);
    KermitPacket answer;
    const TransferCode code = request(
        'A', std::string("\"\"B81") + toChar(static_cast<int>(length.size())) + length, answer);
    if (code != TransferCode::kSuccess || !answer.data.starts_with('N')) return code;
    // The reasons are the letters of the attributes the peer minds.
    const bool tooLong = answer.data.find_first_of("1!") != std::string::npos;
    const bool there = answer.data.find_first_of("#?") != std::string::npos;
    static_cast<void>(end(true));
    if (tooLong) return TransferCode::kOutOfMemory;
    return there ? TransferCode::kFileExistsNoRename : TransferCode::kFileOpenError;
}

TransferCode KermitSender::step() {
    KermitPacket answer;
    TransferCode code = TransferCode::kSuccess;
    std::size_t sent = 0;
    try {
        if (prepared_.empty()) prepare();
        if (prepared_.empty()) return end(false);
        sent = preparedSize_;
        code = request('D', std::exchange(prepared_, {}), answer, [this] { prepare(); });
    } catch (const RuntimeError&) {
        link_.abandon("Cannot read file");
        return TransferCode::kFileOpenError;
    }
    if (code != TransferCode::kSuccess) return code;
    progress_.bytes += sent;
    ++progress_.packets;
    // The peer's user wants no more of this file, or of all files.
    if (answer.data == "X" || answer.data == "Z") {
        static_cast<void>(end(true));
        return TransferCode::kUserBreak;
    }
    return TransferCode::kUnsuccessfulOrMore;
}

void KermitSender::prepare() {
    while (waiting_.size() < kPlenty && !exhausted_) {
        const std::string piece = more_();
        waiting_ += piece;
        exhausted_ = piece.empty();
    }
    prepared_.clear();
    preparedSize_ = encodeData(waiting_, agreement_.sending, room_, prepared_);
    waiting_.erase(0, preparedSize_);
}

TransferCode KermitSender::end(bool discard) {
    KermitPacket answer;
    const TransferCode code = request('Z', discard ? "D" : "", answer);
    return code == TransferCode::kSuccess ? request('B', "", answer) : code;
}

TransferCode KermitSender::request(char type, std::string data, KermitPacket& answer,
                                   const std::function<void()>& meanwhile) {
    sequence_ = (sequence_ + 1) % kKermitSequences;
    return link_.request({type, sequence_, std::move(data)}, "Y", answer, meanwhile);
}

}  // namespace kalvo
