// journal: the batches that were received, and what became of them.
#include <string>
#include <vector>

#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "core/frame_dispatch.h"
#include "journal/batch_journal.h"
#include "platform/sqlite/journal_database.h"
#include "scenario/scenario_loader.h"
#include "settings/options.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// A text as a JSON string, UTF-8.
std::string json(std::string_view ansi) {
    std::string text = "\"";
    for (const char c : toUtf8(ansi)) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text.append(1, '\\').append(1, c);
        } else if (code < 0x20) {
            constexpr std::string_view kHex = "0123456789abcdef";
            text.append("\\u00").append(1, kHex[code >> 4U]).append(1, kHex[code & 15U]);
        } else {
            text.push_back(c);
        }
    }
    return text + "\"";
}

std::string jsonOf(const JournalEntry& entry) {
    return "{\"id\":" + std::to_string(entry.id) + ",\"recu\":" + json(entry.received) +
           ",\"port\":" + std::to_string(entry.origin.port) +
           ",\"terminal\":" + json(entry.origin.terminal) +
           ",\"scenario\":" + json(entry.origin.scenario) +
           ",\"etat\":" + json(nameOf(entry.state)) +
           ",\"enregistrements\":" + std::to_string(entry.records) +
           ",\"passages\":" + std::to_string(entry.passes) +
           ",\"faits\":" + std::to_string(entry.passesDone) +
           ",\"octets\":" + std::to_string(entry.size) + ",\"motif\":" + json(entry.reason) + "}";
}

std::string lineOf(const JournalEntry& entry) {
    std::string line = std::to_string(entry.id) + "\t" + entry.received + "\tCOM " +
                       std::to_string(entry.origin.port) + "\t" + entry.origin.terminal + "\t" +
                       entry.origin.scenario + "\t" + std::string(nameOf(entry.state)) + "\t";
    if (entry.passes > 0)
        line += std::to_string(entry.passesDone) + "/" + std::to_string(entry.passes);
    return toUtf8(line + "\t" + std::to_string(entry.size) + "\t" + entry.reason);
}

void list(JournalFile& journal, bool asJson) {
    const std::vector<JournalEntry> entries = journal.list(0);
    std::string text;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        text += (asJson ? jsonOf(*entry) : lineOf(*entry)) + "\n";
    writeOutput(text);
}

JournalEntry entryOf(JournalFile& journal, std::int64_t id) {
    const auto entry = journal.find(id);
    if (!entry)
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Le journal n'a pas de lot "_ansi) + std::to_string(id));
    return *entry;
}

int resend(const CommandLine& line, SystemBindings& bindings, CommandContext& context,
           JournalFile& journal) {
    const JournalEntry entry = entryOf(journal, line.batch);
    ScenarioRun& run = context.state.scenario;
    LoadActiveScenario(context.platform(), run);
    if (run.active.ScenarioName.empty()) return kExitFailure;
    run.keys.LoadKeyCorrespondence(*bindings.profiles, run.applicationFolder);
    run.DecimalSeparator = readSetting(*bindings.registry, kSepDec);
    EndSignals signals;
    signals.start([&] { context.events.requestEnd(); }, [] {});
    if (!run.active.FileMode)
        context.useKeyboard(std::make_unique<ReconnectingKeyboard>(
            [&] { return connectKeyboard(bindings.keyboard); }, ReconnectingKeyboard::kNeeded));
    BatchJournal batches(&journal, context.events, writeErrorLine);
    const BatchReport report = dispatchAgain(context.platform(), context.state, batches, entry,
                                             journal.bytes(entry.id), line.from);
    writeErrorLine(longText(report));
    return report.whole() ? kExitSuccess : kExitFailure;
}

}  // namespace

int runJournal(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    SqliteJournal journal(bindings.applicationFolder, SqliteJournal::Use::kLook);
    switch (line.journal) {
        case JournalAction::kList: list(journal, line.json); break;
        case JournalAction::kShow:
            writeOutput(journal.bytes(entryOf(journal, line.batch).id));
            break;
        case JournalAction::kResend: return resend(line, bindings, context, journal);
        case JournalAction::kPurge: {
            BatchJournal batches(&journal, context.events, writeErrorLine);
            const auto option = [&](Option name) {
                return optionValue(*bindings.profiles, bindings.applicationFolder, name);
            };
            const std::size_t forgotten =
                batches.purge(option(Option::kJournalDays), option(Option::kJournalMegabytes));
            writeErrorLine(std::to_string(forgotten) +
                           std::string(forgotten > 1 ? " lots oubliés"_ansi : " lot oublié"_ansi));
            break;
        }
    }
    return kExitSuccess;
}

}  // namespace kalvo
