// A terminal's line in memory, with a clock that only waiting moves.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tools/terminal_line.h"

namespace kalvo::testing {

// The host is a function from what the terminal wrote to what is answered.
class MemoryLine : public TerminalLine {
public:
    using Host = std::function<std::string(std::string_view written)>;

    explicit MemoryLine(Host host = {}) : host_(std::move(host)) {}

    std::string wire;                 // everything written
    std::vector<std::int64_t> times;  // of each write
    std::string incoming;             // received at the next read

    void write(std::string_view bytes) override {
        wire.append(bytes);
        times.push_back(clock_);
        if (host_) incoming += host_(bytes);
    }
    std::string read(std::int64_t milliseconds) override {
        if (incoming.empty()) clock_ += milliseconds;
        return std::exchange(incoming, {});
    }
    void pause(std::int64_t milliseconds) override {
        if (milliseconds > 0) clock_ += milliseconds;
    }
    [[nodiscard]] std::int64_t now() override { return clock_; }

private:
    Host host_;
    std::int64_t clock_ = 5000;
};

}  // namespace kalvo::testing
