// Sending a file, or a text, to a Kermit peer.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "transfer/kermit/kermit_link.h"

namespace kalvo {

// The content of a file as what a sender sends.
[[nodiscard]] std::function<std::string()> piecesOf(std::shared_ptr<ByteSource> source);

class KermitSender {
public:
    // `more` gives the next bytes, none at the end. It may throw RuntimeError.
    KermitSender(KermitLink& link, std::function<std::string()> more)
        : link_(link), more_(std::move(more)) {}

    // Begins: our parameters, then the header, 'F' with the name of a file or 'X' for a
    // text. kFileOpenError when the peer refuses the name; else the codes of the link.
    TransferCode begin(const KermitParameters& ours, char header, std::string_view name);

    // Tells a peer that wants to know it that the file is binary and how many bytes long.
    // kOutOfMemory, kFileExistsNoRename or kFileOpenError when it declines the file.
    TransferCode describe(std::uint64_t size);

    // Sends the next packet of the content: kUnsuccessfulOrMore when others follow,
    // kSuccess once the peer has the whole. kUserBreak when its user wants no more,
    // kFileOpenError, which the peer is told, when `more` fails.
    TransferCode step();

    [[nodiscard]] KermitProgress progress() const { return progress_; }

private:
    TransferCode request(char type, std::string data, KermitPacket& answer,
                         const std::function<void()>& meanwhile = {});
    void prepare();
    TransferCode end(bool discard);

    KermitLink& link_;
    std::function<std::string()> more_;
    KermitParameters peer_;
    KermitAgreement agreement_;
    KermitProgress progress_;
    std::size_t room_ = 0;  // for data in a packet
    int sequence_ = -1;
    std::string waiting_;           // given by `more`, not coded yet
    std::string prepared_;          // the data of the next packet
    std::size_t preparedSize_ = 0;  // bytes it stands for
    bool exhausted_ = false;
};

}  // namespace kalvo
