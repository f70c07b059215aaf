#include "scenario/scenario_compiler.h"

#include <optional>
#include <string>

#include "platform/file_system.h"
#include "scenario/scenario_file.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

using scenario_file::Entry;

class Compilation {
public:
    Compilation(ProfileFiles& profiles, Database& database, const std::string& file,
                const ScenarioRecord& scenario)
        : profiles_(profiles), database_(database), file_(file), scenario_(scenario) {}

    bool run() {
        writeProperties();
        step([&] { renumberActions(database_, scenario_.Numero); });
        const std::string line = writeSubFramesAndCollectLine();
        write(scenario_file::kActionLine, line);
        return complete_;
    }

private:
    // Clearing a key first has no effect on the fresh file, but other readers of
    // the folder never see an old value beside new ones.
    void writeProperties() {
        clear(scenario_file::kType);
        clear(scenario_file::kActionLine);
        write(scenario_file::kType, scenario_.Type);
        write(scenario_file::kBoucle, std::to_string(scenario_.Boucle));
        clear(scenario_file::kDepart);
        write(scenario_file::kDepart, std::to_string(scenario_.Depart));
        write(scenario_file::kSubFrames, "");
        write(scenario_file::kPartialMode, std::to_string(scenario_.Trame));
        write(scenario_file::kCompiledCount, std::to_string(scenario_.NbrTrame));
        clear(scenario_file::kSpecif);
        write(scenario_file::kSpecif, std::to_string(scenario_.Specif));
        if (scenario_.Type == kFileType) {
            clear(scenario_file::kChemin);
            write(scenario_file::kChemin, scenario_.Chemin);
        }
    }

    std::string writeSubFramesAndCollectLine() {
        std::string line;
        for (std::int32_t position = 1;; ++position) {
            std::optional<ActionRecord> action;
            step([&] { action = readAction(database_, scenario_.Numero, position); });
            if (!action) return line;
            line.append(action->Champs).append(scenario_file::kItemEnd);
            if (action->PlaceTrame != 0) appendSubFrame(action->PlaceTrame);
        }
    }

    void appendSubFrame(std::int16_t place) {
        std::string list = ReadIniValue(profiles_, file_, scenario_file::kSubFrames.section,
                                        scenario_file::kSubFrames.key);
        list.append(std::to_string(place)).append(scenario_file::kItemEnd);
        write(scenario_file::kSubFrames, list);
    }

    void clear(const Entry& entry) { ClearIniValue(profiles_, file_, entry.section, entry.key); }

    void write(const Entry& entry, std::string_view value) {
        complete_ &= WriteIniValue(profiles_, entry.section, entry.key, value, file_) != 0;
    }

    template <typename Statement>
    void step(Statement&& statement) {
        complete_ &= resumeNext(std::forward<Statement>(statement));
    }

    ProfileFiles& profiles_;
    Database& database_;
    const std::string& file_;
    const ScenarioRecord& scenario_;
    bool complete_ = true;
};

}  // namespace

bool CompileScenario(const Platform& platform, Database& database,
                     std::string_view applicationFolder, std::int16_t numero) {
    std::optional<ScenarioRecord> scenario;
    resumeNext([&] { scenario = readScenario(database, numero); });
    if (!scenario) return false;
    const std::string file = scenarioFile(applicationFolder, scenario->Nom);
    const bool created = resumeNext([&] { platform.files.create(file)->close(); });
    return compileInto(platform.profiles, database, file, *scenario) && created;
}

bool compileInto(ProfileFiles& profiles, Database& database, const std::string& file,
                 const ScenarioRecord& scenario) {
    return Compilation(profiles, database, file, scenario).run();
}

}  // namespace kalvo
