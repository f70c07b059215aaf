// File transfer with a portable terminal: the window frmTransfert without its controls.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/multidll.h"
#include "platform/platform.h"

namespace kalvo {

// The files both ends know each other's by.
inline constexpr std::string_view kTestFile = R"(C:\TESTFILE.$$$)";
inline constexpr std::string_view kUploadedFile = R"(C:\TESTFIL2.$$$)";
inline constexpr std::string_view kRemoteUploadFile = "TESTFILE.$$$";
inline constexpr std::string_view kRemoteDownloadFile = "RECEPT.TXT";

// The parameters of the line that the user may set.
enum class LineParameter { kEscDelay, kNakDelay, kTimeOut };

// What the window shows of it. Members may let the window be drawn; they deliver
// nothing of the program. It must last until the operation it was given to is over.
class PortableTransferView {
public:
    virtual ~PortableTransferView() = default;

    virtual void showVersion(std::int32_t version) = 0;
    virtual void showParameter(LineParameter parameter, std::int32_t value) = 0;
    // Shows the bar, empty; a maximum of 0 where the end is not known.
    virtual void showBar(std::int32_t maximum) = 0;
    virtual void setBar(std::int32_t value) = 0;
    virtual void hideBar() = 0;
    // The name under which an upload is stored, as the library has it.
    virtual void showStoredName(std::string_view name) = 0;
    virtual void showCounts(std::int32_t bytes, std::int32_t packets) = 0;
};

class PortableTransfer {
public:
    PortableTransfer(const Platform& platform, Multidll& library, std::string applicationFolder)
        : platform_(platform),
          library_(library),
          applicationFolder_(std::move(applicationFolder)) {}

    void load(PortableTransferView& view);
    void unload();

    void openPort();
    // Gives the library the leading number of `text` and shows what it has made of it.
    void set(PortableTransferView& view, LineParameter parameter, std::string_view text);
    void createTestFile(PortableTransferView& view);
    void upload(PortableTransferView& view);
    void download(PortableTransferView& view);

    // Breaks off what is running; nothing when nothing is.
    void requestBreak();
    // For the library to ask while it waits; lets the user interface live meanwhile.
    [[nodiscard]] bool breakRequested();

    // A path of the workstation as this system writes it.
    [[nodiscard]] std::string shownPath(std::string_view path) const;

private:
    using PacketFunction = TransferCode (Multidll::*)(std::int32_t& bytes, std::int32_t& packets);

    TransferCode powerSavingOff();
    void powerSavingOn();
    // Says that the user broke off, once; false when nobody did.
    bool brokenOff(TransferCode code);
    void transferPackets(PortableTransferView& view, PacketFunction next, TransferCode powerSaving);
    void say(std::string_view text);

    Platform platform_;
    Multidll& library_;
    std::string applicationFolder_;
    char terminal_ = '\0';
    bool break_ = false;
};

}  // namespace kalvo
