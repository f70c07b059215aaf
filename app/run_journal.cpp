#include "app/run_journal.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/sqlite/journal_database.h"
#include "settings/options.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

std::unique_ptr<JournalFile> openJournal(SystemBindings& bindings,
                                         const std::function<void(std::string_view)>& warn) {
    if (!optionSet(*bindings.profiles, bindings.applicationFolder, Option::kJournal))
        return nullptr;
    try {
        auto journal = std::make_unique<SqliteJournal>(bindings.applicationFolder,
                                                       SqliteJournal::Use::kReceive);
        if (!journal->notice().empty()) warn(journal->notice());
        return journal;
    } catch (const RuntimeError& error) {
        warn(std::string("Les lots ne sont pas gardés, le journal ne s'ouvre pas : "_ansi) +
             error.description());
        return nullptr;
    }
}

}  // namespace

RunJournal::RunJournal(SystemBindings& bindings, EventPump& events,
                       const std::function<void(std::string_view)>& warn)
    : bindings_(bindings),
      warn_(warn),
      file_(openJournal(bindings, warn)),
      batches_(file_.get(), events, warn) {}

void RunJournal::begin() {
    const auto option = [&](Option name) {
        return optionValue(*bindings_.profiles, bindings_.applicationFolder, name);
    };
    const std::size_t waiting = batches_.recover();
    batches_.purge(option(Option::kJournalDays), option(Option::kJournalMegabytes));
    if (waiting == 0) return;
    warn_(std::to_string(waiting) +
          std::string(
              waiting > 1
                  ? " lots n'ont pas été saisis jusqu'au bout ; ils sont dans le journal."_ansi
                  : " lot n'a pas été saisi jusqu'au bout ; il est dans le journal."_ansi));
}

std::size_t RunJournal::waiting() {
    std::vector<JournalEntry> entries;
    if (file_) resumeNext([&] { entries = file_->list(0); });
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(),
                      [](const JournalEntry& entry) { return unfinished(entry.state); }));
}

}  // namespace kalvo
