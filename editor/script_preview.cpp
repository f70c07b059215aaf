#include "editor/script_preview.h"

#include <memory>
#include <utility>

#include "core/no_progress.h"
#include "editor/acting_options.h"
#include "platform/database.h"
#include "platform/profile_files.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

// A compiled scenario in place of its file; every other file is read from where it is,
// and none is written.
class ScenarioInMemory : public ProfileFiles {
public:
    ScenarioInMemory(ProfileFiles& others, std::string path, CompiledScenario scenario)
        : others_(others), path_(std::move(path)), scenario_(std::move(scenario)) {}

    std::string read(std::string_view file, std::string_view section,
                     std::string_view key) override {
        if (file != path_) return others_.read(file, section, key);
        for (const auto& [entry, text] : scenario_.values)
            if (entry.section == section && entry.key == key)
                return std::string(trimBlanks(text).substr(0, kLongestProfileValue));
        return {};
    }

    bool write(std::string_view, std::string_view, std::string_view, std::string_view) override {
        return false;
    }

private:
    ProfileFiles& others_;
    std::string path_;
    CompiledScenario scenario_;
};

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
    preview.options = actingOptions(platform.profiles, folder, *scenario, state.TerminalType);
    ScenarioInMemory profiles(platform.profiles,
                              findScenarioFile(platform.files, folder, scenario->Nom),
                              std::move(compiledNow));
    NoProgress progress;
    const Platform dry{platform.keyboard,  platform.port,  profiles,        platform.registry,
                       platform.databases, platform.files, platform.events, platform.dialogs,
                       platform.icon,      progress,       platform.watch,  platform.log};
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
