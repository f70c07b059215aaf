// A terminal that keeps files: a Kermit server for one folder.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "transfer/kermit_link.h"

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
    // Sends packets from initiation to end; `more` gives the next bytes, none at the end.
    void send(const KermitPacket& header, const std::function<std::string()>& more);
    bool step(char type, std::string data);
    [[nodiscard]] std::string pathOf(const std::string& name) const;

    KermitLink link_;
    FileSystem& files_;
    std::string folder_;
    KermitParameters ours_;
    KermitPacket answer_;
    int sequence_ = 0;
};

}  // namespace kalvo
