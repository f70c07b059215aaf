// What has become of a batch, for whoever tells the user.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/log.h"
#include "platform/typing_watch.h"

namespace kalvo {

class BatchTyping;

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
    bool replayed = false;   // it comes from a file, which still has it
    std::int32_t passes = 0;
    std::int32_t passesDone = 0;
    std::size_t characters = 0;  // received
    std::uint32_t milliseconds = 0;
    std::string target;
    std::string reason;  // French, code page 1252
    // The records during which the user pressed keys of his own, ascending.
    std::vector<std::int32_t> touched;
    // Characters that the session has no way to type, each once.
    std::string untyped;
    // What is left of an interrupted one, if it can be taken up again in this run.
    std::shared_ptr<BatchTyping> rest;
    TypingStop stop = TypingStop::kNone;

    [[nodiscard]] bool whole() const {
        return outcome == Outcome::kTyped || outcome == Outcome::kWritten;
    }
};

// "caractères non saisis : ..."; empty for none.
[[nodiscard]] std::string untypedText(std::string_view untyped);
// "enregistrement 3 à vérifier (touche pressée pendant la saisie)" and "caractères non
// saisis : ..."; empty when there is nothing to check.
[[nodiscard]] std::string remarksText(const BatchReport& report);
// "40 enregistrements saisis", "Lot gardé : ...": one line for a bubble.
[[nodiscard]] std::string shortText(const BatchReport& report);
// "Saisie suspendue à l'enregistrement 3 sur 40 : ...", with what to check, of one that has a
// `rest`.
[[nodiscard]] std::string suspensionText(const BatchReport& report);
// The short text with characters, time and the place where it went, for a log.
[[nodiscard]] std::string longText(const BatchReport& report);
// Good news, or what the user should look at, or an error.
[[nodiscard]] LogLevel levelOf(const BatchReport& report);
void logReport(Log& log, const BatchReport& report);

}  // namespace kalvo
