// What has become of a batch, for whoever tells the user.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/log.h"

namespace kalvo {

struct BatchReport {
    enum class Outcome : std::uint8_t {
        kTyped,        // `target` is the application, where it is known
        kWritten,      // `target` is the file
        kInterrupted,  // typed up to `passesDone`; `reason` says why no further
        kFailed,       // nothing came of it; `reason` says why
        kNothing,      // there was nothing to type; `reason` says why
    };
    Outcome outcome = Outcome::kTyped;
    std::int64_t batch = 0;  // its number in the journal; 0 when it has none
    std::int32_t passes = 0;
    std::int32_t passesDone = 0;
    std::size_t characters = 0;  // received
    std::uint32_t milliseconds = 0;
    std::string target;
    std::string reason;  // French, code page 1252

    [[nodiscard]] bool whole() const {
        return outcome == Outcome::kTyped || outcome == Outcome::kWritten;
    }
};

// "40 enregistrements saisis", "Lot gardé : ...": one line for a bubble.
[[nodiscard]] std::string shortText(const BatchReport& report);
// The same with characters, time and the place where it went, for a log.
[[nodiscard]] std::string longText(const BatchReport& report);
void logReport(Log& log, const BatchReport& report);

}  // namespace kalvo
