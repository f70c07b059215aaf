// Serial lines of Linux: termios, exclusive use, and what the driver counts.
#include <fcntl.h>
#include <linux/serial.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "platform/asio/custom_speed.h"
#include "platform/asio/native_line.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr tcflag_t kFormatFlags = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS;

[[noreturn]] void fail(int number, const std::string& device, std::string_view text) {
    throw RuntimeError(number, fromUtf8(device) + " : " + std::string(text));
}

[[noreturn]] void failToOpen(int error, const std::string& device) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENXIO:
        case ENODEV:
        case EIO:  // a port node without hardware behind it
            fail(error_number::kPortInvalid, device, "port série introuvable"_ansi);
        case EBUSY:
        case EWOULDBLOCK:
            fail(error_number::kPortAlreadyOpen, device,
                 "port déjà ouvert par un autre programme"_ansi);
        case EACCES:
        case EPERM:
            fail(error_number::kPermissionDenied, device,
                 "permission refusée. L'utilisateur doit appartenir au groupe dialout "
                 "(sudo usermod -aG dialout UTILISATEUR), puis rouvrir sa session."_ansi);
        case ENOTTY:
        case EISDIR: fail(error_number::kPortInvalid, device, "n'est pas un port série"_ansi);
        default:
            fail(error_number::kPortIo, device, fromUtf8(std::generic_category().message(error)));
    }
}

[[noreturn]] void refuseSettings(std::string_view reason) {
    throw RuntimeError(
        error_number::kPortSettings,
        std::string("Réglages refusés par le port série : "_ansi) + std::string(reason));
}

// A pseudo-terminal carries bytes, not bits: it has no character format at all and
// the kernel refuses every one but 8N. There, and only there, a format that a wire
// could have is accepted and has no effect.
bool isPseudoTerminal(int line) {
    constexpr unsigned kFirstSlaveMajor = 136;
    constexpr unsigned kLastSlaveMajor = 143;
    struct stat status {};
    if (fstat(line, &status) != 0) return false;
    const unsigned number = major(status.st_rdev);
    return number >= kFirstSlaveMajor && number <= kLastSlaveMajor;
}

tcflag_t dataBitFlags(int dataBits) {
    switch (dataBits) {
        case 5: return CS5;
        case 6: return CS6;
        case 7: return CS7;
        case 8: return CS8;
        default: refuseSettings("4 bits de données n'existent pas sur ce système"_ansi);
    }
}

tcflag_t parityFlags(Parity parity) {
    switch (parity) {
        case Parity::kEven: return PARENB;
        case Parity::kOdd: return PARENB | PARODD;
        case Parity::kMark: return PARENB | CMSPAR | PARODD;
        case Parity::kSpace: return PARENB | CMSPAR;
        case Parity::kNone: break;
    }
    return 0;
}

// With 5 data bits the hardware makes one and a half stop bits of two; 1.5 exists
// nowhere else.
tcflag_t stopBitFlags(const LineSettings& settings) {
    if (settings.stopBits == StopBits::kOneAndHalf && settings.dataBits != 5)
        refuseSettings("1,5 bit d'arrêt n'existe qu'avec 5 bits de données"_ansi);
    return settings.stopBits == StopBits::kOne ? 0 : CSTOPB;
}

bool hasRtsCts(Handshaking mode) {
    return mode == Handshaking::kRtsCts || mode == Handshaking::kRtsAndXon;
}

bool hasXonXoff(Handshaking mode) {
    return mode == Handshaking::kXonXoff || mode == Handshaking::kRtsAndXon;
}

// Every byte passes one to one; a break is not a character (the monitor tells it).
termios rawState(termios state, const LineSettings& settings, Handshaking handshaking,
                 bool pseudoTerminal) {
    const tcflag_t format =
        dataBitFlags(settings.dataBits) | parityFlags(settings.parity) | stopBitFlags(settings);
    cfmakeraw(&state);
    state.c_cflag &= ~kFormatFlags;
    state.c_cflag |= CREAD | CLOCAL | (pseudoTerminal ? tcflag_t{CS8} : format);
    if (hasRtsCts(handshaking)) state.c_cflag |= CRTSCTS;
    state.c_iflag = IGNBRK | IGNPAR;
    if (hasXonXoff(handshaking)) state.c_iflag |= IXON | IXOFF;
    state.c_cc[VSTART] = 0x11;
    state.c_cc[VSTOP] = 0x13;
    state.c_cc[VMIN] = 1;
    state.c_cc[VTIME] = 0;
    return state;
}

// tcsetattr succeeds when any part took effect: what counts is what reads back.
bool tookEffect(int line, const termios& wanted) {
    termios actual{};
    return tcgetattr(line, &actual) == 0 &&
           (actual.c_cflag & kFormatFlags) == (wanted.c_cflag & kFormatFlags);
}

// A divider that misses the speed by more than a receiver tolerates is refused.
bool runsAt(int line, std::uint32_t speed) {
    const std::uint32_t actual = actualSpeed(line);
    const std::uint32_t difference = actual > speed ? actual - speed : speed - actual;
    return std::uint64_t{difference} * 100 <= std::uint64_t{speed} * 3;
}

void claim(int line, const std::string& device) {
    // The lock also stops a second program of the superuser, whom TIOCEXCL lets pass.
    if (flock(line, LOCK_EX | LOCK_NB) != 0) failToOpen(errno, device);
    if (ioctl(line, TIOCEXCL) != 0) failToOpen(errno, device);
}

void raiseDtrAndRts(int line, Handshaking handshaking) {
    // Lines without these signals refuse, and do not need them.
    int signals = TIOCM_DTR | (hasRtsCts(handshaking) ? 0 : TIOCM_RTS);
    (void)ioctl(line, TIOCMBIS, &signals);
}

}  // namespace

NativeLine openNativeLine(const std::string& path, const LineSettings& settings,
                          Handshaking handshaking) {
    const int line = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (line < 0) failToOpen(errno, path);
    try {
        claim(line, path);
        configureNativeLine(line, settings, handshaking);
        raiseDtrAndRts(line, handshaking);
        // Input only: what the previous owner sent may still be on its way.
        tcflush(line, TCIFLUSH);
    } catch (...) {
        close(line);
        throw;
    }
    return line;
}

void configureNativeLine(NativeLine line, const LineSettings& settings, Handshaking handshaking) {
    termios before{};
    if (tcgetattr(line, &before) != 0) failToOpen(errno, "COM");
    const std::uint32_t speedBefore = actualSpeed(line);
    const bool pseudoTerminal = isPseudoTerminal(line);
    const termios wanted = rawState(before, settings, handshaking, pseudoTerminal);

    const bool formatTaken = tcsetattr(line, TCSANOW, &wanted) == 0 && tookEffect(line, wanted);
    if (formatTaken && setCustomSpeed(line, settings.speed) && runsAt(line, settings.speed)) return;

    tcsetattr(line, TCSANOW, &before);
    (void)setCustomSpeed(line, speedBefore);
    refuseSettings(formatTaken ? "vitesse non disponible"_ansi
                               : "format de caractère ou contrôle de flux non disponible"_ansi);
}

bool hasUnsentOutput(NativeLine line) noexcept {
    int waiting = 0;
    return ioctl(line, TIOCOUTQ, &waiting) == 0 && waiting > 0;
}

void releaseNativeLine(NativeLine line) noexcept {
    // Flushing the output of a pseudo-terminal would take back what its other side
    // has not read yet; on a wire it would cut a character that is being sent.
    tcflush(line, hasUnsentOutput(line) ? TCIOFLUSH : TCIFLUSH);
    (void)ioctl(line, TIOCNXCL);
    (void)flock(line, LOCK_UN);
}

LineMonitor::LineMonitor(NativeLine line) noexcept : line_(line), supported_(read(last_)) {}

bool LineMonitor::read(Counters& counters) const noexcept {
    serial_icounter_struct driver{};
    if (ioctl(line_, TIOCGICOUNT, &driver) != 0) return false;
    counters = {driver.brk, driver.overrun + driver.buf_overrun, driver.cts};
    return true;
}

std::optional<ModemLines> LineMonitor::modemLines() const noexcept {
    int lines = 0;
    if (ioctl(line_, TIOCMGET, &lines) != 0) return std::nullopt;
    return ModemLines{(lines & TIOCM_CTS) != 0, (lines & TIOCM_DSR) != 0, (lines & TIOCM_CAR) != 0,
                      (lines & TIOCM_RNG) != 0};
}

LineMonitor::Changes LineMonitor::poll() noexcept {
    Counters now;
    if (!supported_ || !read(now)) return {};
    const Changes changes{now.breaks != last_.breaks, now.overflows != last_.overflows,
                          now.ctsChanges != last_.ctsChanges};
    last_ = now;
    return changes;
}

}  // namespace kalvo
