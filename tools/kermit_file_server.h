// A terminal that keeps files: a Kermit server for one folder.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "transfer/kermit/kermit_link.h"

namespace kalvo {

// Answers directory commands, gives and takes files; names with folders are refused.
// The folder is code page 1252.
class KermitFileServer {
public:
    KermitFileServer(TransferLine& line, FileSystem& files, std::string folder);

    // Serves until a client says that it is finished. What the line throws ends it too.
    void run();

private:
    void give(const KermitPacket& command);
    void list(const KermitPacket& command);
    void take(const KermitPacket& initiation);
    // Sends everything, whatever comes of it.
    void send(char header, std::string_view name, std::function<std::string()> more);
    // RuntimeError 75 for a name that leads out of the folder.
    [[nodiscard]] std::string pathOf(const std::string& name) const;

    KermitLink link_;
    FileSystem& files_;
    std::string folder_;
    KermitParameters ours_;
};

}  // namespace kalvo
