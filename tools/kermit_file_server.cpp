#include "tools/kermit_file_server.h"

#include <algorithm>
#include <utility>

#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kCharactersPerSecond = 11520;
constexpr KermitPrefixes kCommandPrefixes = {};

std::string decoded(std::string_view data) {
    std::string text;
    return decodeData(data, kCommandPrefixes, text) ? text : std::string();
}

}  // namespace

KermitFileServer::KermitFileServer(TransferLine& line, FileSystem& files, std::string folder)
    : link_(line, [] { return false; }), files_(files), folder_(std::move(folder)) {
    link_.setPace(kCharactersPerSecond);
    ours_.packetLength = kLongestPacket;
    ours_.blockCheck = 3;
    ours_.repeat = '~';
    ours_.attributes = true;
}

std::string KermitFileServer::pathOf(const std::string& name) const {
    if (name.empty() || name.find_first_of("/\\") != std::string::npos)
        throw RuntimeError(error_number::kPathAccess, name);
    return folder_ + kPathSeparator + name;
}

void KermitFileServer::run() {
    for (;;) {
        KermitPacket command;
        if (link_.awaitCommand(command) != TransferCode::kSuccess) return;
        const bool generic = command.type == 'G' && !command.data.empty();
        if (command.type == 'I')
            link_.answer(
                {'Y', 0, encodeParameters(answerTo(ours_, parseParameters(command.data)))});
        else if (command.type == 'R')
            give(command);
        else if (command.type == 'S')
            take(command);
        else if (generic && command.data[0] == 'D')
            list(command);
        else if (generic && (command.data[0] == 'F' || command.data[0] == 'L'))
            return static_cast<void>(link_.answer({'Y', 0, ""}));
        else
            link_.abandon("Unknown command");
    }
}

void KermitFileServer::give(const KermitPacket& command) {
    const std::string name = decoded(command.data);
    std::unique_ptr<ByteSource> source;
    try {
        source = files_.open(pathOf(name));
    } catch (const RuntimeError&) {
        return link_.abandon("File not found");
    }
    send({'F', 0, name}, [&] {
        std::string piece(65536, '\0');
        piece.resize(source->read(piece));
        return piece;
    });
}

void KermitFileServer::list(const KermitPacket& command) {
    const std::string argument = decoded(std::string_view(command.data).substr(1));
    const std::string name = argument.substr(std::min<std::size_t>(1, argument.size()));
    std::string line;
    try {
        line = std::to_string(files_.size(pathOf(name))) + "  " + name + "\r\n";
    } catch (const RuntimeError&) {
        return link_.abandon("File not found");
    }
    send({'X', 0, ""}, [&] { return std::exchange(line, {}); });
}

void KermitFileServer::send(const KermitPacket& header, const std::function<std::string()>& more) {
    sequence_ = -1;
    if (!step('S', encodeParameters(ours_))) return;
    const KermitParameters theirs = parseParameters(answer_.data);
    const KermitAgreement agreement = agree(ours_, theirs);
    link_.setBlockCheck(agreement.blockCheck);
    link_.setPeer(theirs);
    std::string name;
    encodeData(header.data, agreement.sending, kShortPacket, name);
    if (!step(header.type, name)) return;
    const auto room = static_cast<std::size_t>(theirs.packetLength - agreement.blockCheck - 2);
    std::string waiting;
    for (;;) {
        if (waiting.empty()) waiting = more();
        if (waiting.empty()) break;
        std::string data;
        waiting.erase(0, encodeData(waiting, agreement.sending, room, data));
        if (!step('D', std::move(data))) return;
    }
    if (step('Z', "")) step('B', "");
}

bool KermitFileServer::step(char type, std::string data) {
    sequence_ = (sequence_ + 1) % kKermitSequences;
    return link_.request({type, sequence_, std::move(data)}, "Y", answer_) ==
           TransferCode::kSuccess;
}

void KermitFileServer::take(const KermitPacket& initiation) {
    const KermitParameters theirs = parseParameters(initiation.data);
    const KermitParameters ours = answerTo(ours_, theirs);
    const KermitAgreement agreement = agree(ours, theirs);
    link_.answer({'Y', 0, encodeParameters(ours)});
    link_.setBlockCheck(agreement.blockCheck);
    link_.setPeer(theirs);
    std::string path;
    std::unique_ptr<TextStream> target;
    try {
        KermitPacket packet;
        while (link_.awaitNext(packet) == TransferCode::kSuccess) {
            std::string content;
            if (packet.type != 'A' && !decodeData(packet.data, agreement.receiving, content)) break;
            if (packet.type == 'F') {
                path = pathOf(content);
                target = files_.create(path + ".part");
            } else if (packet.type == 'D' && target) {
                target->write(content);
            } else if (packet.type == 'Z' && target) {
                target->close();
                target.reset();
                if (packet.data == "D")
                    files_.remove(path + ".part");
                else
                    files_.rename(path + ".part", path);
            }
            link_.answer({'Y', packet.sequence, packet.type == 'A' ? "Y" : ""});
            if (packet.type == 'B') return;
        }
        if (target) {
            target.reset();
            files_.remove(path + ".part");
        }
    } catch (const RuntimeError&) {
        link_.abandon("Cannot store file");
    }
}

}  // namespace kalvo
