// The functions of the communication library, spoken to a Kermit server.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/multidll.h"
#include "platform/transfer_line.h"
#include "transfer/kermit/kermit_link.h"
#include "transfer/kermit/kermit_sender.h"

namespace kalvo {

// The terminal runs a Kermit server; there is one on the line, so its identifier is
// not looked at.
//
// Codes, besides those of KermitLink: kIllegalCommand while the port is not open or
// without upload1 or download1 before, kIllegalFileName for a name that is empty or has
// wildcards, kFileNotThere, kFileOpenError for a file that cannot be opened, read or
// written on either side, kOutOfMemory and kFileExistsNoRename for a file the peer
// declines, kUnknownResponse for an answer that makes no sense.
//
// An upload is written beside its target as "NAME.part" and takes its name once it is
// complete.
class KermitMultidll : public Multidll {
public:
    // `breakRequested` is asked while something is waited for and once a packet; true
    // breaks off, and the peer is told.
    KermitMultidll(TransferLine& line, FileSystem& files, std::function<bool()> breakRequested);
    ~KermitMultidll() override;
    KermitMultidll(const KermitMultidll&) = delete;
    KermitMultidll& operator=(const KermitMultidll&) = delete;

    // kUnsuccessfulOrMore when the port cannot be opened, kIllegalCommand for
    // settings that do not exist.
    TransferCode HM_OpenCommPort(std::int32_t port, std::int32_t speed, std::int32_t dataBits,
                                 std::int32_t parity, std::int32_t stopBits) override;
    TransferCode HM_CloseCommPort(std::int32_t port) override;
    TransferCode HM_file_exist(std::int32_t port, char terminal,
                               std::string_view remoteName) override;
    // Nothing to switch in the protocol: kSuccess when the terminal answers.
    TransferCode HM_power_saving_off(std::int32_t port, char terminal) override;
    TransferCode HM_power_saving_on(std::int32_t port, char terminal) override;
    TransferCode HM_upload1(std::int32_t port, char terminal, std::string_view remoteName,
                            std::string_view localName) override;
    std::int32_t HM_get_return_string_length(std::span<char, kReturnString> text) override;
    TransferCode HM_upload2(std::int32_t& bytes, std::int32_t& packets) override;
    TransferCode HM_download1(std::int32_t port, char terminal, std::string_view localName,
                              std::string_view remoteName, std::int32_t& totalSize) override;
    TransferCode HM_download2(std::int32_t& bytes, std::int32_t& packets) override;

    // Milliseconds between two questions whether to break off: 10..1000, at first 100.
    void HM_set_ESC_delay(std::int32_t value) override;
    // Milliseconds to let a disturbance pass before a packet is asked for again:
    // 0..5000, at first 0.
    void HM_set_NAK_delay(std::int32_t value) override;
    // Seconds of silence before a packet is asked for again, five times in all: 1..60,
    // at first 5.
    void HM_set_time_out(std::int32_t value) override;
    [[nodiscard]] std::int32_t HM_get_ESC_delay() override { return patience_.breakDelay; }
    [[nodiscard]] std::int32_t HM_get_NAK_delay() override { return patience_.nakDelay; }
    [[nodiscard]] std::int32_t HM_get_time_out() override { return patience_.timeOut / 1000; }
    [[nodiscard]] std::int32_t HM_version() override;

private:
    struct Upload;

    [[nodiscard]] KermitParameters ownParameters() const;
    [[nodiscard]] TransferCode checkCall(std::string_view remoteName) const;
    TransferCode hello();
    TransferCode readListing(const KermitPacket& initiation, std::string& text);
    TransferCode request(std::string_view remoteName);
    // Ends the transfer; what is not complete goes away.
    TransferCode finish(TransferCode code);

    TransferLine& line_;
    FileSystem& files_;
    KermitPatience patience_ = {};
    KermitLink link_;
    int pace_ = 960;
    bool sevenBits_ = false;

    std::string localName_;
    std::unique_ptr<Upload> upload_;
    std::unique_ptr<KermitSender> download_;
};

}  // namespace kalvo
