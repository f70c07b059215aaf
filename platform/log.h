// The log: what the program did, for whoever looks for a fault later.
#pragma once

#include <cstdint>
#include <string_view>

namespace kalvo {

enum class LogLevel : std::uint8_t { kInformation, kWarning, kError };

class Log {
public:
    virtual ~Log() = default;
    // One entry; French, code page 1252. Line ends inside become " | ". Never fails: what
    // cannot be written is lost. Any thread may call it.
    virtual void write(LogLevel level, std::string_view text) noexcept = 0;
};

// A log that keeps nothing.
class NoLog : public Log {
public:
    void write(LogLevel, std::string_view) noexcept override {}
};

}  // namespace kalvo
