// Who may type now: one batch at a time, and only into an application of the user's.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/batch_report.h"
#include "core/batch_typing.h"
#include "core/run_time_state.h"
#include "journal/batch_journal.h"
#include "platform/platform.h"

namespace kalvo {

// The batches of a desktop. One that is broken off is suspended until the user decides, or
// until the application it was typed into is in front again; others wait meanwhile.
class TypingTurns {
public:
    // What the desktop does for it. Texts are code page 1252.
    struct Desktop {
        // Gets windows of ours out of the way; whether an application has the focus then.
        std::function<bool()> targetReady;
        std::function<void(std::string_view text)> showSuspended;
        std::function<void()> hideSuspended;
        std::function<void(std::string_view text, LogLevel level)> say;
        // A batch, or what takes a turn like one, is on its way, or no longer.
        std::function<void(bool on)> typing;
        // A batch is done with, or broken off.
        std::function<void(const BatchReport&)> done;
    };

    TypingTurns(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                Desktop desktop);

    // Takes state.ReceivedData, now or when its turn comes.
    void dispatch();
    // To be called a few times a second: goes on with what has waited long enough.
    void tick();

    // Of what is suspended: goes on at the key it came to, or with the whole record, or not
    // at all.
    void resume();
    void restartRecord();
    void abandon();

    // Something that is no batch, as a turn of its own: refused while something is typed or
    // suspended, and suspended when it is broken off.
    void typeOther(const std::function<std::optional<BatchReport>()>& type);

    // The last batch once more, from its beginning.
    void retypeLast();
    // Any batch once more, from a pass on; not while another is being typed or suspended.
    void retype(std::int64_t id, std::string bytes, std::int32_t fromPass);

    [[nodiscard]] bool busy() const { return busy_; }
    [[nodiscard]] bool suspended() const { return suspended_.rest != nullptr; }
    // Whether tick() has something to look after.
    [[nodiscard]] bool pending() const { return suspended() || !waiting_.empty(); }

private:
    struct Batch {
        std::int64_t id = 0;
        std::string bytes;
        std::int32_t fromPass = 1;
    };

    // What keeps the application in front from being typed into, our own windows out of
    // the way.
    [[nodiscard]] TypingStop targetProblem();
    void setBusy(bool on);
    void warn(std::string_view text) const { desktop_.say(text, LogLevel::kWarning); }
    void wait(Batch batch, std::string_view reason);
    [[nodiscard]] bool mayGoOn();
    void start(Batch batch);
    void type(Batch batch);
    void finish(const BatchReport& report);
    void suspend(const BatchReport& report);
    void goOn();

    Platform platform_;
    RunTimeState& state_;
    BatchJournal& journal_;
    Desktop desktop_;
    bool busy_ = false;
    BatchReport suspended_;        // with its `rest` while there is one
    bool suspendedOther_ = false;  // it is no batch
    std::deque<Batch> waiting_;
    Batch last_;
};

}  // namespace kalvo
