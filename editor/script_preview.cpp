#include "editor/script_preview.h"

#include <memory>
#include <optional>

#include "core/no_progress.h"
#include "editor/acting_options.h"
#include "platform/database.h"
#include "platform/profile_files.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "settings/assumed_profiles.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

// The value that a compiled scenario gives an entry, as its file would give it back.
std::string valueIn(const CompiledScenario& scenario, std::string_view section,
                    std::string_view key) {
    for (const auto& [entry, text] : scenario.values)
        if (entry.section == section && entry.key == key)
            return std::string(trimBlanks(text).substr(0, kLongestProfileValue));
    return {};
}

class ReadOnlyDatabase : public Database {
public:
    explicit ReadOnlyDatabase(Database& database) : database_(database) {}

    std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        return database_.OpenRecordset(sql);
    }
    void Execute(std::string_view) override {}
    void Transaction(const std::function<void()>&) override {}

private:
    Database& database_;
};

}  // namespace

ScriptPreview previewScript(const Platform& platform, const RunTimeState& state,
                            std::int16_t scenarioNumber, std::string_view frame) {
    const auto scenario = readScenario(*state.database, scenarioNumber);
    if (!scenario) return {};
    const std::string& folder = state.scenario.applicationFolder;
    ReadOnlyDatabase database(*state.database);
    CompiledScenario compiledNow = compiled(database, *scenario);
    ScriptPreview preview;
    preview.warnings = warningsOf(platform, database, folder, *scenario, compiledNow);
    if (!compiledNow.refusal.empty()) preview.warnings.push_back(compiledNow.refusal);
    preview.options = actingOptions(platform.profiles, folder, *scenario, state.TerminalType);
    AssumedProfiles profiles(
        platform.profiles,
        [&, path = findScenarioFile(platform.files, folder, scenario->Nom)](
            std::string_view file, std::string_view section, std::string_view key) {
            return file == path ? std::optional(valueIn(compiledNow, section, key)) : std::nullopt;
        });
    NoProgress progress;
    const Platform dry = dryRun(platform, profiles, progress);
    ScenarioRun run;
    run.applicationFolder = folder;
    run.counterUse = CounterUse::kReadOnly;
    run.DecimalSeparator = state.scenario.DecimalSeparator;
    run.active.ScenarioName = scenario->Nom;
    LoadTestScenario(dry, run, scenario->Nom);
    run.keys.LoadKeyCorrespondence(profiles, folder);
    std::string text(frame);
    SplitFrameFields(dry, run, text);
    preview.script = BuildKeyScript(dry, run, text);
    preview.toFile = run.active.FileMode;
    preview.timerPause = run.TimerPause;
    return preview;
}

}  // namespace kalvo
