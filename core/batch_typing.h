// The typing of one batch, which can be broken off and taken up again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/batch_report.h"
#include "core/script_typing.h"
#include "journal/batch_journal.h"
#include "platform/platform.h"
#include "platform/typing_watch.h"

namespace kalvo {

// Why typing stopped, as users are told; empty when it did not.
[[nodiscard]] std::string_view reasonOf(TypingStop stop);

// Why nothing can be typed, of a keyboard that was not connected just now.
[[nodiscard]] std::string_view keyboardProblem(KeyboardInput& keyboard);

// A key script with the places where its records begin. Where it stops it knows how it goes
// on: at the key it came to, or with the record it was in.
class BatchTyping {
public:
    BatchTyping(std::int64_t batch, std::string script, std::vector<std::uint32_t> passStarts,
                int timerPause, ScriptSource source = ScriptSource::kReceived)
        : batch_(batch),
          script_(std::move(script)),
          passStarts_(std::move(passStarts)),
          timerPause_(timerPause),
          source_(source) {}

    // Goes on with a record; the first is 1, one beyond the last leaves nothing.
    void goTo(std::int32_t pass);
    // Types what is left and tells the journal, if there is one, and `report`. ProgramEnd
    // when the program was asked to end.
    TypingStop run(const Platform& platform, BatchJournal* journal, BatchReport& report);

    [[nodiscard]] std::int32_t passes() const {
        return static_cast<std::int32_t>(passStarts_.size());
    }
    // The record that a place of the script is in; 1 at least.
    [[nodiscard]] std::int32_t passAt(std::size_t place) const;

private:
    void goOnAsReceived();

    std::int64_t batch_;
    std::string script_;
    std::vector<std::uint32_t> passStarts_;
    int timerPause_;
    ScriptSource source_;
    std::size_t place_ = 0;  // what is before it has been typed
    std::string lead_;       // typed before what is behind it
};

}  // namespace kalvo
