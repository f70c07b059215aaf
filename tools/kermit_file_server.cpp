#include "tools/kermit_file_server.h"

#include <algorithm>
#include <utility>

#include "text/runtime_error.h"
#include "transfer/kermit/kermit_file_sink.h"
#include "transfer/kermit/kermit_receiver.h"
#include "transfer/kermit/kermit_sender.h"

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
    : link_(line, [] { return false; }),
      files_(files),
      folder_(std::move(folder)),
      ours_(fullParameters(kCharactersPerSecond)) {
    link_.setPace(kCharactersPerSecond);
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
    std::shared_ptr<ByteSource> source;
    try {
        source = files_.open(pathOf(name));
    } catch (const RuntimeError&) {
        return link_.abandon("File not found");
    }
    send('F', name, piecesOf(source));
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
    send('X', "", [&] { return std::exchange(line, {}); });
}

void KermitFileServer::send(char header, std::string_view name, std::function<std::string()> more) {
    KermitSender sender(link_, std::move(more));
    if (sender.begin(ours_, header, name) != TransferCode::kSuccess) return;
    while (sender.step() == TransferCode::kUnsuccessfulOrMore) {
    }
}

void KermitFileServer::take(const KermitPacket& initiation) {
    KermitFileSink sink(files_, [this](const std::string& name) { return pathOf(name); });
    KermitReceiver receiver(link_, sink);
    TransferCode code = receiver.accept(initiation, ours_);
    if (code != TransferCode::kSuccess) return;
    do code = receiver.step();
    while (code == TransferCode::kUnsuccessfulOrMore);
}

}  // namespace kalvo
