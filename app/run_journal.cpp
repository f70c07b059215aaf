#include "app/run_journal.h"

#include <string>
#include <utility>

#include "platform/sqlite/journal_database.h"
#include "settings/options.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::size_t kDayLength = 10;            // "2024-03-05"
constexpr std::uint32_t kRetryInterval = 10'000;  // milliseconds

}  // namespace

std::unique_ptr<JournalFile> RunJournal::openJournal() {
    if (!wanted_) return nullptr;
    lastTry_ = events_.GetTickCount();
    try {
        auto journal = std::make_unique<SqliteJournal>(bindings_.applicationFolder,
                                                       SqliteJournal::Use::kReceive);
        if (!journal->notice().empty()) warn_(journal->notice());
        if (std::exchange(refused_, false)) warn_("Les lots sont de nouveau gardés."_ansi);
        return journal;
    } catch (const RuntimeError& error) {
        if (!std::exchange(refused_, true))
            warn_(std::string("Les lots ne sont pas gardés, le journal ne s'ouvre pas : "_ansi) +
                  error.description());
        return nullptr;
    }
}

// A full disk at the start may have room by now.
JournalFile* RunJournal::openLate() {
    if (wanted_ && events_.GetTickCount() - lastTry_ >= kRetryInterval) file_ = openJournal();
    return file_.get();
}

RunJournal::RunJournal(SystemBindings& bindings, EventPump& events,
                       const std::function<void(std::string_view)>& warn)
    : bindings_(bindings),
      events_(events),
      warn_(warn),
      wanted_(optionSet(*bindings.profiles, bindings.applicationFolder, Option::kJournal)),
      file_(openJournal()),
      batches_(file_.get(), events, warn, [this] { return openLate(); }) {}

void RunJournal::begin() {
    const std::size_t waiting = batches_.recover();
    forgetDaily();
    if (waiting == 0) return;
    warn_(std::to_string(waiting) +
          std::string(
              waiting > 1
                  ? " lots n'ont pas été saisis jusqu'au bout ; ils sont dans le journal."_ansi
                  : " lot n'a pas été saisi jusqu'au bout ; il est dans le journal."_ansi));
}

void RunJournal::forgetDaily() {
    std::string today = timeText(events_.now()).substr(0, kDayLength);
    if (today == forgottenOn_) return;
    forgottenOn_ = std::move(today);
    const auto option = [&](Option name) {
        return optionValue(*bindings_.profiles, bindings_.applicationFolder, name);
    };
    batches_.purge(option(Option::kJournalDays), option(Option::kJournalMegabytes));
}

std::size_t RunJournal::waiting() {
    std::size_t count = 0;
    if (file_) resumeNext([&] { count = file_->countUnfinished(); });
    return count;
}

}  // namespace kalvo
