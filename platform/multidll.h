// The communication library for portable terminals, Multidll.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kalvo {

// What the functions of the library return.
enum class TransferCode : std::int32_t {
    kSuccess = 0,
    // Unsuccessful; from upload2 and download2: a packet went through, more remain.
    kUnsuccessfulOrMore = 1,
    kIllegalCommand = 2,
    kNak = 3,
    kTimeOut = 4,
    kUnknownResponse = 5,
    kBlockCheckError = 6,
    kNoData = 7,
    kUserBreak = 8,
    kPowerSavingOffFailed = 9,
    kPowerFailure = 10,
    kProcessorException = 11,
    kResetByHost = 12,
    kUserReset = 13,
    kApplicationReset = 14,
    kColdStart = 15,
    kWarmStart = 16,
    kDiagnosticState = 20,
    kAlreadyStarted = 21,
    kInvalidParameterCount = 22,
    kFileNotThere = 30,
    kIllegalFileName = 31,
    kFileExistsRename = 32,
    kFileExistsNoRename = 33,
    kFileOpenError = 34,
    kNoProgram = 35,
    kRamDiskNotEmpty = 40,
    kOutOfMemory = 41,
    kUploadMode = 50,
};

// The functions of the library that the program uses, under their own names. Texts
// are code page 1252. All of them block until they are done or the terminal has not
// answered for the time-out.
//
// RuntimeError 453 for a function that an installed library does not have, 53 for a
// library that cannot be loaded.
class Multidll {
public:
    // Room for the text that HM_get_return_string_length leaves, its end included.
    static constexpr std::size_t kReturnString = 255;

    virtual ~Multidll() = default;

    // `parity`: 0 none, 1 odd, 2 even. Speed in bit/s.
    virtual TransferCode HM_OpenCommPort(std::int32_t port, std::int32_t speed,
                                         std::int32_t dataBits, std::int32_t parity,
                                         std::int32_t stopBits) = 0;
    virtual TransferCode HM_CloseCommPort(std::int32_t port) = 0;

    // kSuccess when the file is on the terminal.
    virtual TransferCode HM_file_exist(std::int32_t port, char terminal,
                                       std::string_view remoteName) = 0;
    virtual TransferCode HM_power_saving_off(std::int32_t port, char terminal) = 0;
    virtual TransferCode HM_power_saving_on(std::int32_t port, char terminal) = 0;

    // Begins to fetch a file; HM_upload2 then fetches packet after packet and leaves
    // the bytes and packets so far, until it returns another code than
    // kUnsuccessfulOrMore.
    virtual TransferCode HM_upload1(std::int32_t port, char terminal, std::string_view remoteName,
                                    std::string_view localName) = 0;
    // The length of the text the library leaves in `text`: the name under which the
    // file is stored. `text` holds the local name before the call.
    virtual std::int32_t HM_get_return_string_length(std::span<char, kReturnString> text) = 0;
    virtual TransferCode HM_upload2(std::int32_t& bytes, std::int32_t& packets) = 0;

    // Begins to send a file and leaves its size in bytes; HM_download2 goes on as
    // HM_upload2 does.
    virtual TransferCode HM_download1(std::int32_t port, char terminal, std::string_view localName,
                                      std::string_view remoteName, std::int32_t& totalSize) = 0;
    virtual TransferCode HM_download2(std::int32_t& bytes, std::int32_t& packets) = 0;

    // The three parameters of the line, in the library's own unit; it may keep another
    // value than the one given.
    virtual void HM_set_ESC_delay(std::int32_t value) = 0;
    virtual void HM_set_NAK_delay(std::int32_t value) = 0;
    virtual void HM_set_time_out(std::int32_t value) = 0;
    [[nodiscard]] virtual std::int32_t HM_get_ESC_delay() = 0;
    [[nodiscard]] virtual std::int32_t HM_get_NAK_delay() = 0;
    [[nodiscard]] virtual std::int32_t HM_get_time_out() = 0;
    [[nodiscard]] virtual std::int32_t HM_version() = 0;

    // What the user has to know of this way to a portable, French; empty for nothing. No
    // function of the library.
    [[nodiscard]] virtual std::string remark() const { return {}; }
};

// Makes a library. `breakRequested` is for it to ask while it waits; it must not be
// asked before the first function is called.
using MultidllFactory =
    std::function<std::unique_ptr<Multidll>(std::function<bool()> breakRequested)>;

}  // namespace kalvo
