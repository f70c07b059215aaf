// The line as a simulated terminal sees it, and its clock.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kalvo {

class TerminalLine {
public:
    virtual ~TerminalLine() = default;

    // Sends all bytes; returns when they have been handed over.
    virtual void write(std::string_view bytes) = 0;

    // Received bytes, as soon as there are any; empty when none came within the time.
    virtual std::string read(std::int64_t milliseconds) = 0;

    virtual void pause(std::int64_t milliseconds) = 0;

    // Milliseconds since some start.
    [[nodiscard]] virtual std::int64_t now() = 0;
};

}  // namespace kalvo
