// One open line and the thread that drains it.
#pragma once

#include <array>
#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "platform/asio/line_inbox.h"
#include "platform/asio/line_stream.h"

namespace kalvo {

// Everything needed to open a line, and to open it again after it was lost.
struct LineParameters {
    PortDevice device;
    LineSettings settings;
    Handshaking handshaking = Handshaking::kNone;
    PlugWatch watch;  // may be null
};

// Open from construction to destruction. A line that is lost (unplugged, hung up, cut off) is
// tried again every second with the same parameters, and quickly for a while when
// something has been plugged in; the inbox hears of both turns.
class SerialLine {
public:
    // Opens and starts; RuntimeErrors as openNativeLine.
    SerialLine(LineParameters parameters, std::shared_ptr<LineInbox> inbox);
    // A line whose device is away: lost from the start, and tried until it is there.
    enum Away { kAway };
    SerialLine(Away, LineParameters parameters, std::shared_ptr<LineInbox> inbox);
    // Gives queued output half a second to leave, drops the rest and closes.
    ~SerialLine();
    SerialLine(const SerialLine&) = delete;
    SerialLine& operator=(const SerialLine&) = delete;

    // Applies settings at once, or when the line is back. RuntimeError 380.
    void reconfigure(const LineSettings& settings, Handshaking handshaking);

    // Queues bytes; RuntimeError 8012 while the line is lost.
    void send(std::string_view bytes);

    [[nodiscard]] std::optional<ModemLines> modemLines();

private:
    [[nodiscard]] std::unique_ptr<LineStream> openStream();
    // On the line's thread.
    void start();
    void read();
    void writeNext();
    void watch();
    void report();
    void lookAtModem();
    void lose();
    void retryLater();
    void retry();
    void awaitDevice();
    void hurry();

    bool waitUntilWritten(std::chrono::steady_clock::time_point deadline);
    void waitUntilSent(std::chrono::steady_clock::time_point deadline);

    std::shared_ptr<LineInbox> inbox_;
    LineParameters parameters_;
    asio::io_context io_{1};
    asio::steady_timer watchTimer_{io_};
    asio::steady_timer retryTimer_{io_};
    std::chrono::steady_clock::time_point hurriedUntil_;
    std::array<char, 65536> readBuffer_{};
    std::string writeBuffer_;
    std::unique_ptr<LineStream> stream_;  // null: not open yet

    std::mutex mutex_;
    std::condition_variable written_;
    std::string sendQueue_;
    bool writing_ = false;
    bool lost_ = false;
    std::optional<ModemLines> modemLines_;

    std::shared_ptr<void> plugWatch_;  // while the line is lost
    std::thread thread_;
};

}  // namespace kalvo
