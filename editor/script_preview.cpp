#include "editor/script_preview.h"

#include <map>
#include <memory>
#include <utility>

#include "core/no_progress.h"
#include "platform/database.h"
#include "platform/profile_files.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// One file held in memory; every other is read from where it is and never written.
class ScratchFile : public ProfileFiles {
public:
    ScratchFile(ProfileFiles& others, std::string path) : others_(others), path_(std::move(path)) {}

    std::string read(std::string_view file, std::string_view section,
                     std::string_view key) override {
        if (file != path_) return others_.read(file, section, key);
        const auto found = values_.find({std::string(section), std::string(key)});
        return found == values_.end() ? std::string() : found->second;
    }

    bool write(std::string_view file, std::string_view section, std::string_view key,
               std::string_view value) override {
        if (file != path_) return false;
        values_[{std::string(section), std::string(key)}] = value;
        return true;
    }

private:
    ProfileFiles& others_;
    std::string path_;
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

class ReadOnlyDatabase : public Database {
public:
    explicit ReadOnlyDatabase(Database& database) : database_(database) {}

    std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        return database_.OpenRecordset(sql);
    }
    void Execute(std::string_view) override {}

private:
    Database& database_;
};

}  // namespace

ScriptPreview previewScript(const Platform& platform, const RunTimeState& state,
                            std::int16_t scenarioNumber, std::string_view frame) {
    const auto scenario = readScenario(*state.database, scenarioNumber);
    if (!scenario) return {};
    const std::string& folder = state.scenario.applicationFolder;
    const std::string file = scenarioFile(folder, scenario->Nom);
    ScratchFile profiles(platform.profiles, file);
    ReadOnlyDatabase database(*state.database);
    NoProgress progress;
    const Platform dry{platform.keyboard,  platform.port,  profiles,        platform.registry,
                       platform.databases, platform.files, platform.events, platform.dialogs,
                       platform.icon,      progress};
    ScenarioRun run;
    run.applicationFolder = folder;
    run.counterUse = CounterUse::kReadOnly;
    run.DecimalSeparator = state.scenario.DecimalSeparator;
    run.active.ScenarioName = scenario->Nom;
    compileInto(profiles, database, file, *scenario);
    LoadTestScenario(dry, run, scenario->Nom);
    run.keys.LoadKeyCorrespondence(profiles, folder);
    std::string text(frame);
    SplitFrameFields(dry, run, text);
    ScriptPreview preview;
    preview.script = BuildKeyScript(dry, run, text);
    preview.toFile = run.active.FileMode;
    preview.timerPause = run.TimerPause;
    return preview;
}

}  // namespace kalvo
