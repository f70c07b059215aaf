// The journal of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/bindings/system_bindings.h"
#include "journal/batch_journal.h"
#include "platform/event_pump.h"

namespace kalvo {

// Opens the journal of the application folder, as its options want it. Without one the
// program works all the same.
class RunJournal {
public:
    // `warn` is told, in French, what the user should know.
    RunJournal(SystemBindings& bindings, EventPump& events,
               const std::function<void(std::string_view)>& warn);

    // Begins a run: forgets what is old, and says how many batches of runs before wait for
    // the user.
    void begin();
    // Forgets what is old, once a day at most: a run may last for months.
    void forgetDaily();

    // How many batches are not finished.
    [[nodiscard]] std::size_t waiting();

    [[nodiscard]] BatchJournal& batches() { return batches_; }
    // Where they are kept; null when they are not.
    [[nodiscard]] JournalFile* file() { return file_.get(); }

private:
    [[nodiscard]] std::unique_ptr<JournalFile> openJournal();
    [[nodiscard]] JournalFile* openLate();

    SystemBindings& bindings_;
    EventPump& events_;
    std::function<void(std::string_view)> warn_;
    bool wanted_;
    bool refused_ = false;  // it could not be opened, which was said
    std::uint32_t lastTry_ = 0;
    std::unique_ptr<JournalFile> file_;
    BatchJournal batches_;
    std::string forgottenOn_;  // the day
};

}  // namespace kalvo
