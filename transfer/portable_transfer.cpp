#include "transfer/portable_transfer.h"

#include <algorithm>
#include <array>

#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "settings/settings_store.h"
#include "text/number_text.h"
#include "transfer/file_choice.h"
#include "transfer/transfer_code_text.h"

namespace kalvo {

namespace {

constexpr std::int32_t kPort = 1;
constexpr std::int32_t kSpeed = 9600;
constexpr std::int32_t kDataBits = 8;
constexpr std::int32_t kNoParity = 0;
constexpr std::int32_t kStopBits = 1;
constexpr char kTerminal = 'A';

constexpr std::int32_t kTestRecords = 450;
constexpr std::size_t kTestRecordSize = 256;
constexpr std::size_t kTestTextLength = 250;

// The bar is gone whichever way an operation ends.
class ShownBar {
public:
    ShownBar(PortableTransferView& view, std::int32_t maximum) : view_(view) {
        view_.showBar(maximum);
    }
    ShownBar(const ShownBar&) = delete;
    ShownBar& operator=(const ShownBar&) = delete;
    ~ShownBar() { view_.hideBar(); }

private:
    PortableTransferView& view_;
};

// A record of fixed length: the text behind its length in two bytes, then zeros.
std::string testRecord() {
    std::string record;
    record.push_back(static_cast<char>(kTestTextLength & 0xFFU));
    record.push_back(static_cast<char>(kTestTextLength >> 8U));
    record.append(kTestTextLength, 'x');
    record.resize(kTestRecordSize, '\0');
    return record;
}

}  // namespace

void PortableTransfer::load(PortableTransferView& view) {
    terminal_ = kTerminal;
    view.showVersion(library_.HM_version());
    view.showParameter(LineParameter::kTimeOut, library_.HM_get_time_out());
    view.showParameter(LineParameter::kNakDelay, library_.HM_get_NAK_delay());
    view.showParameter(LineParameter::kEscDelay, library_.HM_get_ESC_delay());
}

void PortableTransfer::unload() { library_.HM_CloseCommPort(kPort); }

void PortableTransfer::openPort() {
    library_.HM_OpenCommPort(kPort, kSpeed, kDataBits, kNoParity, kStopBits);
}

void PortableTransfer::set(PortableTransferView& view, LineParameter parameter,
                           std::string_view text) {
    const std::int32_t value = roundedLeadingNumber(text);
    switch (parameter) {
        case LineParameter::kEscDelay: library_.HM_set_ESC_delay(value); break;
        case LineParameter::kNakDelay: library_.HM_set_NAK_delay(value); break;
        case LineParameter::kTimeOut: library_.HM_set_time_out(value); break;
    }
    load(view);
}

void PortableTransfer::createTestFile(PortableTransferView& view) {
    const ShownBar bar(view, kTestRecords);
    const std::string record = testRecord();
    const auto file = platform_.files.create(kTestFile);
    for (std::int32_t number = 1; number <= kTestRecords; ++number) {
        file->write(record);
        view.setBar(number);
    }
    file->close();
}

void PortableTransfer::upload(PortableTransferView& view) {
    break_ = false;
    const TransferCode exists = library_.HM_file_exist(kPort, terminal_, kRemoteUploadFile);
    if (exists != TransferCode::kSuccess) {
        if (!brokenOff(exists)) say("File doesn't exist on portable !");
        return;
    }
    const TransferCode powerSaving = powerSavingOff();
    const TransferCode begun =
        library_.HM_upload1(kPort, terminal_, kRemoteUploadFile, kUploadedFile);
    // Asked for whatever the code is: the library may have stored the file under
    // another name, which it gives back here and nowhere else.
    std::array<char, Multidll::kReturnString> name{};
    std::copy(kUploadedFile.begin(), kUploadedFile.end(), name.begin());
    const std::int32_t length = library_.HM_get_return_string_length(name);
    const auto room = static_cast<std::int32_t>(name.size());
    view.showStoredName({name.data(), static_cast<std::size_t>(std::clamp(length, 0, room))});
    if (begun == TransferCode::kSuccess) {
        const ShownBar bar(view, 0);
        transferPackets(view, &Multidll::HM_upload2, powerSaving);
    } else if (!brokenOff(begun)) {
        say("Upload1: " + transferCodeText(begun));
    }
    powerSavingOn();
}

void PortableTransfer::download(PortableTransferView& view) {
    const std::string file =
        platform_.dialogs.openFile(temporaryFolder(applicationFolder_), kFileFilter);
    if (file.empty()) return;
    break_ = false;
    const TransferCode powerSaving = powerSavingOff();
    std::int32_t size = 0;
    const TransferCode begun =
        library_.HM_download1(kPort, terminal_, file, kRemoteDownloadFile, size);
    if (begun == TransferCode::kSuccess) {
        const ShownBar bar(view, size);
        transferPackets(view, &Multidll::HM_download2, powerSaving);
    } else if (!brokenOff(begun)) {
        say("Download1 " + transferCodeText(begun));
    }
    powerSavingOn();
}

void PortableTransfer::requestBreak() { break_ = true; }

bool PortableTransfer::breakRequested() {
    platform_.events.DoEvents();
    return break_;
}

std::string PortableTransfer::shownPath(std::string_view path) const {
    return platform_.files.shownPath(path);
}

TransferCode PortableTransfer::powerSavingOff() {
    const TransferCode code = library_.HM_power_saving_off(kPort, terminal_);
    // A user who breaks off here breaks off the transfer, which says so.
    if (code != TransferCode::kSuccess && !break_)
        say("Powersave off, error: " + transferCodeText(code));
    return code;
}

void PortableTransfer::powerSavingOn() {
    break_ = false;
    const TransferCode code = library_.HM_power_saving_on(kPort, terminal_);
    if (code != TransferCode::kSuccess) say("Powersave on, error: " + transferCodeText(code));
}

void PortableTransfer::transferPackets(PortableTransferView& view, PacketFunction next,
                                       TransferCode powerSaving) {
    std::int32_t bytes = 0;
    std::int32_t packets = 0;
    TransferCode code = TransferCode::kUnsuccessfulOrMore;
    bool asked = false;
    // One more call once the user breaks off: a library that asks for it tells the
    // terminal then. Others are left between two packets.
    while (code == TransferCode::kUnsuccessfulOrMore && !asked) {
        asked = breakRequested();
        code = (library_.*next)(bytes, packets);
        view.showCounts(bytes, packets);
        view.setBar(bytes);
    }
    if (brokenOff(code)) return;
    // Meant: the end of a transfer is reported by how power saving was switched off,
    // whatever the last packet brought.
    say(transferCodeText(powerSaving));
}

bool PortableTransfer::brokenOff(TransferCode code) {
    if (!break_ || code == TransferCode::kSuccess) return false;
    // Forgotten before anything else is asked of the library, which would break that
    // off as well.
    break_ = false;
    say(transferCodeText(TransferCode::kUserBreak));
    return true;
}

void PortableTransfer::say(std::string_view text) {
    platform_.dialogs.message(text, kApplicationTitle, MessageIcon::kNone);
}

}  // namespace kalvo
