// script and events: what would be typed, without typing it.
#include <array>
#include <cstdio>
#include <sstream>

#include "app/command_context.h"
#include "app/commands.h"
#include "app/event_listing.h"
#include "keys/key_injection.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_loader.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// "JJ/MM/AA"; years from 70 on belong to the last century.
std::optional<LocalTime> parseDate(const std::string& text) {
    unsigned day = 0;
    unsigned month = 0;
    unsigned year = 0;
    int used = 0;
    const int read = std::sscanf(text.c_str(), "%2u/%2u/%2u%n", &day, &month, &year, &used);
    if (read != 3 || static_cast<std::size_t>(used) != text.size()) return std::nullopt;
    if (day < 1 || day > 31 || month < 1 || month > 12) return std::nullopt;
    LocalTime date;
    date.day = static_cast<int>(day);
    date.month = static_cast<int>(month);
    date.year = static_cast<int>(year < 70 ? 2000 + year : 1900 + year);
    return date;
}

// The scenario of a dry run, in force for this run only: the choice stays as it is.
void loadScenario(CommandContext& context, const CommandLine& line) {
    const Platform platform = context.platform();
    ScenarioRun& run = context.state.scenario;
    const std::string name = line.scenario.value_or(readSetting(platform.registry, kRacScenChx));
    if (name.empty())
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Aucun scénario n'est défini"_ansi));
    if (!platform.files.fileExists(scenarioFile(run.applicationFolder, name)))
        throw RuntimeError(error_number::kFileNotFound,
                           std::string("Le scénario n'est pas compilé : "_ansi) + name);
    run.active.ScenarioName = name;
    LoadTestScenario(platform, run, name);
    run.keys.LoadKeyCorrespondence(platform.profiles, run.applicationFolder);
    run.DecimalSeparator = readSetting(platform.registry, kSepDec);
    run.counterUse = CounterUse::kReadOnly;
}

}  // namespace

int runScript(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    if (line.date) {
        const auto date = parseDate(*line.date);
        if (!date) {
            writeErrorLine("Date incorrecte (JJ/MM/AA) : " + *line.date);
            return kExitUsage;
        }
        context.events.setDate(*date);
    }
    loadScenario(context, line);
    const Platform platform = context.platform();
    std::string frame = readInput(platform.files, line.arguments.front());
    SplitFrameFields(platform, context.state.scenario, frame);
    writeOutput(BuildKeyScript(platform, context.state.scenario, frame));
    return kExitSuccess;
}

int runEvents(const CommandLine& line, SystemBindings& bindings) {
    const std::string locks = line.locks.value_or("");
    if (locks.find_first_not_of("CNS") != std::string::npos) {
        writeErrorLine("Verrouillages inconnus (C, N, S) : " + locks);
        return kExitUsage;
    }
    const auto layout = layoutByName(line.layout.value_or("us"));
    const std::string script = readInput(*bindings.files, line.arguments.front());
    EventListing listing(*layout, locks, writeOutput);
    ConsoleEventPump events(nullptr);
    Keysend(listing, events).SendKeyScript(script, 0);
    listing.finish();
    return kExitSuccess;
}

}  // namespace kalvo
