// Serial lines of Windows: the device control block.
#include <windows.h>

#include "platform/asio/native_line.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

[[noreturn]] void fail(int number, const std::string& device, std::string_view text) {
    throw RuntimeError(number, device + " : " + std::string(text));
}

[[noreturn]] void failToOpen(DWORD error, const std::string& device) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_DEV_NOT_EXIST:
        case ERROR_BAD_UNIT:
            fail(error_number::kPortInvalid, device, "port série introuvable"_ansi);
        case ERROR_ACCESS_DENIED:  // the driver's answer while somebody has the port open
        case ERROR_SHARING_VIOLATION:
        case ERROR_BUSY:
            fail(error_number::kPortAlreadyOpen, device,
                 "port déjà ouvert par un autre programme"_ansi);
        default:
            fail(error_number::kPortIo, device,
                 std::string("erreur du système numéro "_ansi) + std::to_string(error));
    }
}

[[noreturn]] void refuseSettings() {
    throw RuntimeError(error_number::kPortSettings,
                       std::string("Réglages refusés par le port série"_ansi));
}

BYTE parityOf(Parity parity) {
    switch (parity) {
        case Parity::kEven: return EVENPARITY;
        case Parity::kOdd: return ODDPARITY;
        case Parity::kMark: return MARKPARITY;
        case Parity::kSpace: return SPACEPARITY;
        case Parity::kNone: break;
    }
    return NOPARITY;
}

BYTE stopBitsOf(StopBits stopBits) {
    switch (stopBits) {
        case StopBits::kOneAndHalf: return ONE5STOPBITS;
        case StopBits::kTwo: return TWOSTOPBITS;
        case StopBits::kOne: break;
    }
    return ONESTOPBIT;
}

DCB controlBlockOf(DCB block, const LineSettings& settings, Handshaking handshaking) {
    const bool rtsCts =
        handshaking == Handshaking::kRtsCts || handshaking == Handshaking::kRtsAndXon;
    const bool xonXoff =
        handshaking == Handshaking::kXonXoff || handshaking == Handshaking::kRtsAndXon;
    block.BaudRate = settings.speed;
    block.ByteSize = static_cast<BYTE>(settings.dataBits);
    block.Parity = parityOf(settings.parity);
    block.StopBits = stopBitsOf(settings.stopBits);
    block.fBinary = 1;
    block.fParity = 0;
    block.fErrorChar = 0;
    block.fNull = 0;
    block.fAbortOnError = 0;
    block.fDsrSensitivity = 0;
    block.fOutxDsrFlow = 0;
    block.fDtrControl = DTR_CONTROL_ENABLE;
    block.fOutxCtsFlow = rtsCts ? 1 : 0;
    block.fRtsControl = rtsCts ? RTS_CONTROL_HANDSHAKE : RTS_CONTROL_ENABLE;
    block.fOutX = xonXoff ? 1 : 0;
    block.fInX = xonXoff ? 1 : 0;
    block.XonChar = 0x11;
    block.XoffChar = 0x13;
    block.XonLim = 2048;
    block.XoffLim = 512;
    return block;
}

// A read returns with what is there as soon as there is anything.
void setTimeouts(HANDLE line) {
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = 1;
    SetCommTimeouts(line, &timeouts);
}

}  // namespace

NativeLine openNativeLine(const std::string& path, const LineSettings& settings,
                          Handshaking handshaking) {
    const HANDLE line = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (line == INVALID_HANDLE_VALUE) failToOpen(GetLastError(), path);
    try {
        configureNativeLine(line, settings, handshaking);
        setTimeouts(line);
        SetupComm(line, 65536, 65536);
        PurgeComm(line, PURGE_RXCLEAR | PURGE_TXCLEAR);
    } catch (...) {
        CloseHandle(line);
        throw;
    }
    return line;
}

void configureNativeLine(NativeLine line, const LineSettings& settings, Handshaking handshaking) {
    DCB block{};
    block.DCBlength = sizeof(block);
    if (!GetCommState(line, &block)) refuseSettings();
    DCB wanted = controlBlockOf(block, settings, handshaking);
    if (!SetCommState(line, &wanted)) refuseSettings();
}

bool hasUnsentOutput(NativeLine line) noexcept {
    DWORD errors = 0;
    COMSTAT status{};
    return ClearCommError(line, &errors, &status) && status.cbOutQue > 0;
}

void releaseNativeLine(NativeLine line) noexcept {
    const DWORD output = hasUnsentOutput(line) ? DWORD{PURGE_TXCLEAR} : DWORD{0};
    PurgeComm(line, PURGE_RXCLEAR | output);
}

LineMonitor::LineMonitor(NativeLine line) noexcept : line_(line), supported_(read(last_)) {}

// The system keeps flags since the last question rather than counts; CTS is a level.
bool LineMonitor::read(Counters& counters) const noexcept {
    DWORD errors = 0;
    DWORD modem = 0;
    if (!ClearCommError(line_, &errors, nullptr)) return false;
    if (!GetCommModemStatus(line_, &modem)) return false;
    counters.breaks = (errors & CE_BREAK) != 0 ? 1 : 0;
    counters.overflows = (errors & (CE_OVERRUN | CE_RXOVER)) != 0 ? 1 : 0;
    counters.ctsChanges = (modem & MS_CTS_ON) != 0 ? 1 : 0;
    return true;
}

std::optional<ModemLines> LineMonitor::modemLines() const noexcept {
    DWORD lines = 0;
    if (!GetCommModemStatus(line_, &lines)) return std::nullopt;
    return ModemLines{(lines & MS_CTS_ON) != 0, (lines & MS_DSR_ON) != 0, (lines & MS_RLSD_ON) != 0,
                      (lines & MS_RING_ON) != 0};
}

LineMonitor::Changes LineMonitor::poll() noexcept {
    Counters now;
    if (!supported_ || !read(now)) return {};
    const Changes changes{now.breaks != 0, now.overflows != 0, now.ctsChanges != last_.ctsChanges};
    last_ = now;
    return changes;
}

}  // namespace kalvo
