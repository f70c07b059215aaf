// A pseudo-terminal as a test's line: the test is the device behind it.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/serial/test_pump.h"

namespace kalvo::testing {

class Pty {
public:
    Pty() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0)
            throw std::runtime_error("no pseudo-terminal");
        path_ = ptsname(master_);
        // No echo while nobody has the slave open.
        termios state{};
        tcgetattr(master_, &state);
        cfmakeraw(&state);
        tcsetattr(master_, TCSANOW, &state);
    }
    ~Pty() { unplug(); }
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] int master() const { return master_; }

    void unplug() {
        if (master_ >= 0) close(master_);
        master_ = -1;
    }

    // Sends all bytes, waiting for room; the number sent before the deadline.
    std::size_t send(std::string_view bytes) {
        const std::size_t all = bytes.size();
        const auto deadline = std::chrono::steady_clock::now() + kDeadline;
        while (!bytes.empty() && std::chrono::steady_clock::now() < deadline) {
            bytes.remove_prefix(sendWhatFits(bytes));
            if (!bytes.empty()) waitFor(POLLOUT);
        }
        return all - bytes.size();
    }

    [[nodiscard]] std::size_t sendWhatFits(std::string_view bytes) const {
        const ssize_t count = write(master_, bytes.data(), bytes.size());
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

    // What arrived, once it is `count` bytes or the deadline is over.
    std::string receive(std::size_t count) {
        std::string received;
        const auto deadline = std::chrono::steady_clock::now() + kDeadline;
        while (received.size() < count && std::chrono::steady_clock::now() < deadline) {
            std::array<char, 4096> buffer{};
            const ssize_t size = read(master_, buffer.data(), buffer.size());
            if (size > 0)
                received.append(buffer.data(), static_cast<std::size_t>(size));
            else
                waitFor(POLLIN);
        }
        return received;
    }

    // What is there without waiting.
    [[nodiscard]] std::string receiveWaiting() const {
        std::array<char, 4096> buffer{};
        const ssize_t size = read(master_, buffer.data(), buffer.size());
        return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size)) : "";
    }

private:
    void waitFor(short events) const {
        pollfd entry{master_, events, 0};
        poll(&entry, 1, 10);
        // While the slave is closed poll returns at once.
        if ((entry.revents & POLLHUP) != 0) usleep(1000);
    }

    int master_;
    std::string path_;
};

}  // namespace kalvo::testing
