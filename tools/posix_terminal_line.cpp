#include "tools/posix_terminal_line.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kalvo {

namespace {

constexpr std::int64_t kWhileClosed = 5;    // ms between two looks at a closed slave
constexpr std::int64_t kLongestWait = 100;  // ms, bounds the delay of a signal that
                                            // arrives just before a wait

volatile std::sig_atomic_t interrupted = 0;

[[noreturn]] void fail(int error, const std::string& what) {
    throw std::system_error(error, std::generic_category(), what);
}

void checkInterrupted() {
    if (interrupted != 0) throw Interrupted();
}

// What poll reports within the time; 0 when nothing.
short waitFor(int descriptor, short events, std::int64_t milliseconds) {
    checkInterrupted();
    pollfd entry{descriptor, events, 0};
    const auto time = static_cast<int>(std::clamp<std::int64_t>(milliseconds, 0, kLongestWait));
    const int ready = poll(&entry, 1, time);
    checkInterrupted();
    return ready > 0 ? entry.revents : short{0};
}

int openMaster() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master < 0) fail(errno, "pseudo-terminal");
    if (grantpt(master) == 0 && unlockpt(master) == 0) return master;
    const int error = errno;
    close(master);
    fail(error, "pseudo-terminal");
}

// The slave keeps this state while it is closed. Opened and closed once, it also
// makes the master report whether anybody has it open.
void makeRaw(const std::string& slavePath) {
    const int slave = open(slavePath.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios state{};
    if (slave < 0 || tcgetattr(slave, &state) != 0) fail(errno, slavePath);
    cfmakeraw(&state);
    const int result = tcsetattr(slave, TCSANOW, &state);
    const int error = errno;
    close(slave);
    if (result != 0) fail(error, slavePath);
}

void replaceLink(const std::string& link, const std::string& target) {
    namespace fs = std::filesystem;
    if (fs::is_symlink(fs::symlink_status(link))) fs::remove(link);
    fs::create_symlink(target, link);
}

}  // namespace

void interruptOnSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) { interrupted = 1; };
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

PosixTerminalLine::~PosixTerminalLine() { close(descriptor_); }

// Fails unless trying again makes sense.
void PosixTerminalLine::checkTransfer(ssize_t count, const char* what) const {
    if (count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR))) return;
    const int error = count < 0 ? errno : EIO;
    if (error != EIO || side_ == Side::kDevice) fail(error, what);
}

void PosixTerminalLine::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        checkTransfer(count, "écriture");
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if ((waitFor(descriptor_, POLLOUT, kLongestWait) & POLLHUP) != 0) {
            pause(kWhileClosed);
        }
    }
}

std::string PosixTerminalLine::read(std::int64_t milliseconds) {
    std::array<char, 4096> buffer{};
    const std::int64_t deadline = now() + milliseconds;
    for (;;) {
        const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
        checkTransfer(count, "lecture");
        if (count > 0) return {buffer.data(), static_cast<std::size_t>(count)};
        const std::int64_t left = deadline - now();
        if (left <= 0) return {};
        if ((waitFor(descriptor_, POLLIN, left) & POLLHUP) != 0)
            pause(std::min(left, kWhileClosed));
    }
}

void PosixTerminalLine::pause(std::int64_t milliseconds) {
    const std::int64_t deadline = now() + milliseconds;
    for (std::int64_t left = milliseconds; left > 0; left = deadline - now()) {
        checkInterrupted();
        poll(nullptr, 0, static_cast<int>(std::min(left, kLongestWait)));
    }
    checkInterrupted();
}

std::int64_t PosixTerminalLine::now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

PseudoTerminal::PseudoTerminal(const std::string& link)
    : line_(openMaster(), PosixTerminalLine::Side::kMaster) {
    slavePath_ = ptsname(line_.descriptor());
    makeRaw(slavePath_);
    if (link.empty()) return;
    replaceLink(link, slavePath_);
    link_ = link;
}

PseudoTerminal::~PseudoTerminal() {
    std::error_code ignored;
    if (!link_.empty()) std::filesystem::remove(link_, ignored);
}

void PseudoTerminal::waitUntilOpened() {
    // Who opens a port first drops what it holds: the first bytes come after that.
    constexpr std::int64_t kSettle = 100;
    while ((waitFor(line_.descriptor(), POLLIN, 0) & POLLHUP) != 0) line_.pause(kWhileClosed);
    line_.pause(kSettle);
}

}  // namespace kalvo
