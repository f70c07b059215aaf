#include "transfer/kermit_multidll.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::int32_t kVersion = 100;
constexpr std::size_t kPiece = 65536;
// A command fits into a short packet: nothing longer is agreed on before it.
constexpr std::size_t kLongestName = 64;
constexpr std::string_view kParityLetters = "NOE";

std::string encodeWhole(std::string_view text, const KermitPrefixes& prefixes) {
    std::string data;
    encodeData(text, prefixes, 5 * text.size(), data);
    return data;
}

// A file's entry in the listings servers make has its name last (Unix) or first beside
// a size (others); a sentence that says the file is missing has neither.
bool lists(std::string_view line, std::string_view name) {
    std::string_view first;
    std::string_view last;
    bool sized = false;
    while (!line.empty()) {
        const std::size_t size = std::min(line.find_first_of(" \t\r"), line.size());
        const std::string_view word = line.substr(0, size);
        line.remove_prefix(std::min(size + 1, line.size()));
        if (word.empty()) continue;
        if (first.empty()) first = word;
        sized = sized || word.find_first_not_of("0123456789.,") == std::string_view::npos;
        last = word.substr(word.find_last_of("/\\:") + 1);
    }
    return equalIgnoringCase(last, name) || (sized && equalIgnoringCase(first, name));
}

bool listingHas(std::string_view text, std::string_view name) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (lists(text.substr(0, end), name)) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

}  // namespace

KermitMultidll::KermitMultidll(TransferLine& line, FileSystem& files,
                               std::function<bool()> breakRequested)
    : line_(line), files_(files), link_(line, std::move(breakRequested)) {}

KermitMultidll::~KermitMultidll() { finish(TransferCode::kUserBreak); }

TransferCode KermitMultidll::HM_OpenCommPort(std::int32_t port, std::int32_t speed,
                                             std::int32_t dataBits, std::int32_t parity,
                                             std::int32_t stopBits) {
    if (parity < 0 || parity >= static_cast<int>(kParityLetters.size()) || speed <= 0)
        return TransferCode::kIllegalCommand;
    finish(TransferCode::kUserBreak);
    pace_ = std::max(speed / 10, 1);
    sevenBits_ = dataBits < 8;
    link_.setPace(pace_);
    try {
        line_.open(port, std::to_string(speed) + "," +
                             kParityLetters[static_cast<std::size_t>(parity)] + "," +
                             std::to_string(dataBits) + "," + std::to_string(stopBits));
    } catch (const RuntimeError& error) {
        return error.number() == error_number::kPortSettings ? TransferCode::kIllegalCommand
                                                             : TransferCode::kUnsuccessfulOrMore;
    }
    return TransferCode::kSuccess;
}

TransferCode KermitMultidll::HM_CloseCommPort(std::int32_t /*port*/) {
    if (phase_ != Phase::kIdle) giveUp(TransferCode::kUserBreak, "Port closed");
    line_.close();
    return TransferCode::kSuccess;
}

TransferCode KermitMultidll::checkCall(std::string_view remoteName) const {
    if (!line_.isOpen()) return TransferCode::kIllegalCommand;
    const bool single = !remoteName.empty() && remoteName.size() <= kLongestName &&
                        remoteName.find_first_of("*?") == std::string_view::npos;
    return single ? TransferCode::kSuccess : TransferCode::kIllegalFileName;
}

KermitParameters KermitMultidll::ownParameters() const {
    KermitParameters parameters;
    parameters.packetLength = longestPacket(pace_);
    parameters.timeOut = patience_.timeOut / 1000;
    parameters.eighthBit = sevenBits_ ? '&' : 'Y';
    parameters.blockCheck = 3;
    parameters.repeat = '~';
    parameters.attributes = true;
    return parameters;
}

void KermitMultidll::settle(const KermitParameters& ours, const KermitParameters& theirs) {
    peer_ = theirs;
    agreement_ = agree(ours, theirs);
    link_.setBlockCheck(agreement_.blockCheck);
    link_.setPeer(theirs);
}

TransferCode KermitMultidll::hello() {
    finish(TransferCode::kUserBreak);
    if (!line_.isOpen()) return TransferCode::kIllegalCommand;
    link_.setPatience(patience_);
    agreement_ = {};
    return link_.greet({'I', 0, encodeParameters(ownParameters())});
}

TransferCode KermitMultidll::HM_power_saving_off(std::int32_t /*port*/, char /*terminal*/) {
    return hello();
}

TransferCode KermitMultidll::HM_power_saving_on(std::int32_t /*port*/, char /*terminal*/) {
    return hello();
}

// Takes the parameters with which the peer begins to send.
TransferCode KermitMultidll::accept(const KermitPacket& initiation) {
    const KermitParameters theirs = parseParameters(initiation.data);
    const KermitParameters ours = answerTo(ownParameters(), theirs);
    const TransferCode code = link_.answer({'Y', initiation.sequence, encodeParameters(ours)});
    settle(ours, theirs);
    return code;
}

TransferCode KermitMultidll::HM_file_exist(std::int32_t /*port*/, char /*terminal*/,
                                           std::string_view remoteName) {
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    std::string text;
    TransferCode code = hello();
    if (code == TransferCode::kSuccess) {
        const std::string question = std::string("D") +
                                     toChar(static_cast<int>(remoteName.size())) +
                                     std::string(remoteName);
        KermitPacket answer;
        code = link_.request({'G', 0, encodeWhole(question, {})}, "SY", answer);
        if (code == TransferCode::kSuccess && answer.type == 'Y') text = answer.data;
        if (code == TransferCode::kSuccess && answer.type == 'S') {
            code = accept(answer);
            if (code == TransferCode::kSuccess) code = readListing(text);
        }
        if (code == TransferCode::kUserBreak && link_.peerBrokeOff())
            return TransferCode::kFileNotThere;
    }
    if (code != TransferCode::kSuccess) return code;
    return listingHas(text, remoteName) ? TransferCode::kSuccess : TransferCode::kFileNotThere;
}

// The text of a long answer. Only the beginning is kept: one entry is what was asked for.
TransferCode KermitMultidll::readListing(std::string& text) {
    KermitPacket packet;
    for (;;) {
        const TransferCode code = link_.awaitNext(packet);
        if (code != TransferCode::kSuccess) return code;
        if (packet.type == 'D' && text.size() < kPiece &&
            !decodeData(packet.data, agreement_.receiving, text))
            return giveUp(TransferCode::kUnknownResponse, "Bad data");
        const TransferCode sent = link_.answer({'Y', packet.sequence, ""});
        if (sent != TransferCode::kSuccess || packet.type == 'B') return sent;
    }
}

TransferCode KermitMultidll::HM_upload1(std::int32_t /*port*/, char /*terminal*/,
                                        std::string_view remoteName, std::string_view localName) {
    finish(TransferCode::kUserBreak);
    localName_ = localName;
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    TransferCode code = hello();
    if (code != TransferCode::kSuccess) return code;
    bytes_ = 0;
    packets_ = 0;
    try {
        target_ = files_.create(localName_ + ".part");
    } catch (const RuntimeError&) {
        return TransferCode::kFileOpenError;
    }
    phase_ = Phase::kUpload;
    code = receiveHeader(remoteName);
    if (code == TransferCode::kUserBreak && link_.peerBrokeOff())
        code = TransferCode::kFileNotThere;
    return code == TransferCode::kSuccess ? code : finish(code);
}

TransferCode KermitMultidll::receiveHeader(std::string_view remoteName) {
    KermitPacket packet;
    TransferCode code = link_.request({'R', 0, encodeWhole(remoteName, {})}, "S", packet);
    if (code == TransferCode::kSuccess) code = accept(packet);
    if (code == TransferCode::kSuccess) code = link_.awaitNext(packet);
    if (code != TransferCode::kSuccess) return code;
    if (packet.type != 'F') return giveUp(TransferCode::kUnknownResponse, "File expected");
    return link_.answer({'Y', packet.sequence, ""});
}

TransferCode KermitMultidll::HM_upload2(std::int32_t& bytes, std::int32_t& packets) {
    if (phase_ != Phase::kUpload) return TransferCode::kIllegalCommand;
    KermitPacket packet;
    TransferCode code = link_.awaitNext(packet);
    while (code == TransferCode::kSuccess && packet.type == 'A') {
        code = link_.answer({'Y', packet.sequence, "Y"});
        if (code == TransferCode::kSuccess) code = link_.awaitNext(packet);
    }
    if (code != TransferCode::kSuccess) return finish(code);
    if (packet.type == 'D')
        code = receivePiece(packet);
    else if (packet.type == 'Z')
        code = keepFile(packet);
    else
        code = giveUp(TransferCode::kUnknownResponse, "Data expected");
    report(bytes, packets);
    return code;
}

TransferCode KermitMultidll::receivePiece(const KermitPacket& packet) {
    // Answered first: the peer prepares its next packet meanwhile.
    const TransferCode sent = link_.answer({'Y', packet.sequence, ""});
    if (sent != TransferCode::kSuccess) return finish(sent);
    std::string content;
    if (!decodeData(packet.data, agreement_.receiving, content))
        return giveUp(TransferCode::kUnknownResponse, "Bad data");
    try {
        target_->write(content);
    } catch (const RuntimeError&) {
        return giveUp(TransferCode::kFileOpenError, "Cannot write file");
    }
    bytes_ += content.size();
    ++packets_;
    return TransferCode::kUnsuccessfulOrMore;
}

TransferCode KermitMultidll::keepFile(const KermitPacket& end) {
    const bool discarded = end.data == "D";
    if (!discarded) {
        try {
            target_->close();
            files_.rename(localName_ + ".part", localName_);
            target_.reset();
        } catch (const RuntimeError&) {
            return giveUp(TransferCode::kFileOpenError, "Cannot store file");
        }
    }
    TransferCode code = link_.answer({'Y', end.sequence, ""});
    KermitPacket packet;
    if (code == TransferCode::kSuccess) code = link_.awaitNext(packet);
    if (code != TransferCode::kSuccess) return finish(code);
    if (packet.type != 'B') return giveUp(TransferCode::kUnknownResponse, "One file only");
    code = link_.answer({'Y', packet.sequence, ""});
    return finish(discarded ? TransferCode::kUserBreak : code);
}

std::int32_t KermitMultidll::HM_get_return_string_length(std::span<char, kReturnString> text) {
    const std::string_view name = std::string_view(localName_).substr(0, kReturnString - 1);
    if (!name.empty()) {
        std::fill(text.begin(), text.end(), '\0');
        std::copy(name.begin(), name.end(), text.begin());
    }
    return static_cast<std::int32_t>(std::find(text.begin(), text.end(), '\0') - text.begin());
}

TransferCode KermitMultidll::HM_download1(std::int32_t /*port*/, char /*terminal*/,
                                          std::string_view localName, std::string_view remoteName,
                                          std::int32_t& totalSize) {
    if (const auto refusal = checkCall(remoteName); refusal != TransferCode::kSuccess)
        return refusal;
    std::uint64_t size = 0;
    std::unique_ptr<ByteSource> source;
    try {
        size = files_.size(localName);
        source = files_.open(localName);
    } catch (const RuntimeError& error) {
        const int number = error.number();
        return number == error_number::kFileNotFound || number == error_number::kPathNotFound
                   ? TransferCode::kFileNotThere
                   : TransferCode::kFileOpenError;
    }
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    totalSize = static_cast<std::int32_t>(std::min(size, kMost));
    const TransferCode code = hello();
    if (code != TransferCode::kSuccess) return code;
    source_ = std::move(source);
    sourceEnded_ = false;
    bytes_ = 0;
    packets_ = 0;
    phase_ = Phase::kDownload;
    return offer(remoteName, size);
}

TransferCode KermitMultidll::offer(std::string_view remoteName, std::uint64_t size) {
    const KermitParameters ours = ownParameters();
    KermitPacket answer;
    sequence_ = -1;
    TransferCode code = step('S', encodeParameters(ours), answer);
    if (code != TransferCode::kSuccess) return code;
    settle(ours, parseParameters(answer.data));
    code = step('F', encodeWhole(remoteName, agreement_.sending), answer);
    if (code == TransferCode::kUserBreak && link_.peerBrokeOff())
        return TransferCode::kFileOpenError;
    if (code != TransferCode::kSuccess || !peer_.attributes) return code;
    // Binary, and the length in bytes.
    const std::string length = std::to_string(size);
    code = step('A', std::string("\"\"B81") + toChar(static_cast<int>(length.size())) + length,
                answer);
    if (code != TransferCode::kSuccess || !answer.data.starts_with('N')) return code;
    // The reasons are the letters of the attributes the peer minds.
    const bool tooLong = answer.data.find_first_of("1!") != std::string::npos;
    const bool there = answer.data.find_first_of("#?") != std::string::npos;
    static_cast<void>(sendEnd(true));
    if (tooLong) return TransferCode::kOutOfMemory;
    return there ? TransferCode::kFileExistsNoRename : TransferCode::kFileOpenError;
}

TransferCode KermitMultidll::HM_download2(std::int32_t& bytes, std::int32_t& packets) {
    if (phase_ != Phase::kDownload) return TransferCode::kIllegalCommand;
    const TransferCode code = sendPiece();
    report(bytes, packets);
    return code;
}

void KermitMultidll::prepareData() {
    while (piece_.size() < kPiece / 2 && !sourceEnded_) {
        const std::size_t before = piece_.size();
        piece_.resize(before + kPiece);
        const std::size_t got = source_->read(std::span(piece_).subspan(before));
        piece_.resize(before + got);
        sourceEnded_ = got == 0;
    }
    const int checkAndHeader = agreement_.blockCheck + (peer_.packetLength > kShortPacket ? 0 : 2);
    const auto room = static_cast<std::size_t>(std::min(peer_.packetLength, longestPacket(pace_)) -
                                               checkAndHeader);
    prepared_.clear();
    preparedSize_ = encodeData(piece_, agreement_.sending, room, prepared_);
    piece_.erase(0, preparedSize_);
}

TransferCode KermitMultidll::sendPiece() {
    KermitPacket answer;
    TransferCode code = TransferCode::kSuccess;
    std::size_t sent = 0;
    try {
        if (prepared_.empty()) prepareData();
        if (prepared_.empty()) return sendEnd(false);
        sent = preparedSize_;
        code = step('D', std::exchange(prepared_, {}), answer, [this] { prepareData(); });
    } catch (const RuntimeError&) {
        return giveUp(TransferCode::kFileOpenError, "Cannot read file");
    }
    if (code != TransferCode::kSuccess) return code;
    bytes_ += sent;
    ++packets_;
    // The peer's user wants no more of this file, or of all files.
    if (answer.data == "X" || answer.data == "Z") {
        static_cast<void>(sendEnd(true));
        return TransferCode::kUserBreak;
    }
    return TransferCode::kUnsuccessfulOrMore;
}

TransferCode KermitMultidll::sendEnd(bool discard) {
    KermitPacket answer;
    TransferCode code = step('Z', discard ? "D" : "", answer);
    if (code == TransferCode::kSuccess) code = step('B', "", answer);
    return finish(code);
}

TransferCode KermitMultidll::step(char type, std::string data, KermitPacket& answer,
                                  const std::function<void()>& meanwhile) {
    sequence_ = (sequence_ + 1) % kKermitSequences;
    const TransferCode code =
        link_.request({type, sequence_, std::move(data)}, "Y", answer, meanwhile);
    return code == TransferCode::kSuccess ? code : finish(code);
}

TransferCode KermitMultidll::finish(TransferCode code) {
    phase_ = Phase::kIdle;
    source_.reset();
    piece_.clear();
    prepared_.clear();
    if (target_ == nullptr) return code;
    target_.reset();
    try {
        files_.remove(localName_ + ".part");
    } catch (const RuntimeError&) {
        // It is replaced by the next transfer; the code tells what matters.
    }
    return code;
}

TransferCode KermitMultidll::giveUp(TransferCode code, std::string_view reason) {
    link_.abandon(reason);
    return finish(code);
}

void KermitMultidll::report(std::int32_t& bytes, std::int32_t& packets) const {
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    bytes = static_cast<std::int32_t>(std::min(bytes_, kMost));
    packets = packets_;
}

void KermitMultidll::HM_set_ESC_delay(std::int32_t value) {
    patience_.breakDelay = std::clamp(value, 10, 1000);
}

void KermitMultidll::HM_set_NAK_delay(std::int32_t value) {
    patience_.nakDelay = std::clamp(value, 0, 5000);
}

void KermitMultidll::HM_set_time_out(std::int32_t value) {
    patience_.timeOut = 1000 * std::clamp(value, 1, 60);
}

std::int32_t KermitMultidll::HM_version() { return kVersion; }

}  // namespace kalvo
