// A serial port whose traffic can be looked at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/serial_port.h"
#include "text/line_capture.h"

namespace kalvo {

// Passes everything on to another port, unchanged and at once, and remembers the last of
// what went over it: bytes as they arrive, not as they are read.
class LineTap : public SerialPort {
public:
    // Bytes of one event at most: what a line of a list shows.
    static constexpr std::size_t kRow = 16;
    // Events kept; a few megabytes.
    static constexpr std::size_t kMost = 20'000;

    // Milliseconds of local time since 1970; any thread may ask.
    using Clock = std::function<std::int64_t()>;

    // The port is closed and outlives the tap.
    LineTap(SerialPort& line, Clock clock);

    struct Traffic {
        std::vector<LineEvent> events;
        std::uint64_t next = 0;  // the number of the event that comes behind them
    };
    // The events from a number on, as far as they are still kept; the first one ever has 0.
    [[nodiscard]] Traffic since(std::uint64_t number);

    // The settings text the port was given last.
    [[nodiscard]] const std::string& settings() const { return settings_; }

    void setCommPort(int number) override { line_.setCommPort(number); }
    [[nodiscard]] int CommPort() const override { return line_.CommPort(); }
    void setSettings(std::string_view settings) override;
    void setHandshaking(Handshaking mode) override { line_.setHandshaking(mode); }
    void setRThreshold(int characters) override { line_.setRThreshold(characters); }
    void setSThreshold(int characters) override { line_.setSThreshold(characters); }
    void setInputMode(int mode) override { line_.setInputMode(mode); }
    void setInputLen(int characters) override { line_.setInputLen(characters); }
    std::string Input() override { return line_.Input(); }
    void Output(std::string_view bytes) override;
    [[nodiscard]] std::size_t InBufferCount() const override { return line_.InBufferCount(); }
    void setPortOpen(bool open) override;
    void reopen() override;
    [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
    [[nodiscard]] int CommEvent() const override { return line_.CommEvent(); }
    [[nodiscard]] std::optional<ModemLines> modemLines() const override {
        return line_.modemLines();
    }
    void onComm(std::function<void()> handler) override { comm_ = std::move(handler); }
    void onInput(std::function<void(std::string_view bytes)> listener) override {
        input_ = std::move(listener);
    }
    void onOpening(std::function<void()> handler) override { line_.onOpening(std::move(handler)); }
    void onClosed(std::function<void(std::size_t unread)> handler) override {
        closed_ = std::move(handler);
    }
    [[nodiscard]] std::string deviceName() const override { return line_.deviceName(); }
    [[nodiscard]] std::string identity(int number) const override { return line_.identity(number); }
    void onLineChange(std::function<void(bool lost)> handler) override {
        lineChange_ = std::move(handler);
    }

private:
    void keep(LineEventKind kind, std::string_view bytes);
    void note(std::string_view text);
    void noteCommEvent();
    // Opens, and tells how that went.
    void opening(const std::function<void()>& open);

    SerialPort& line_;
    Clock clock_;
    std::string settings_;
    std::function<void()> comm_;
    std::function<void(std::string_view)> input_;
    std::function<void(std::size_t)> closed_;
    std::function<void(bool)> lineChange_;

    std::mutex mutex_;  // the line's own thread keeps, the program's looks
    std::deque<LineEvent> events_;
    std::uint64_t forgotten_ = 0;  // events before the first one kept
    bool seen_ = true;             // the last event, which then grows no more
};

}  // namespace kalvo
