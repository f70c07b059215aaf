// The settings side of a site of its own: a folder with the shipped key files and an
// empty database, controllers on it, and fakes for what the user sees and the port.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "editor/action_editor.h"
#include "editor/scenario_editor.h"
#include "editor/serial_config.h"
#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_engine.h"
#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "tests/support/fake_platform.h"
#include "tests/support/temporary_folder.h"

#ifdef _WIN32
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_profile_files.h"
#else
#include "platform/linux/linux_file_system.h"
#include "platform/linux/settings/linux_profile_files.h"
#endif

namespace kalvo::testing {

#ifdef _WIN32
using SystemFiles = WindowsFileSystem;
using SystemProfiles = WindowsProfileFiles;
#else
using SystemFiles = LinuxFileSystem;
using SystemProfiles = LinuxProfileFiles;
#endif

struct EditorSite {
    TemporaryFolder folder;
    FakePlatform world;
    SystemProfiles profiles;
    SystemFiles files;
    SqliteEngine engine;
    Platform platform{world.keyboard, world.port,   profiles,      world.registry, engine,
                      files,          world.events, world.dialogs, world.icon,     world.progress};
    RunTimeState state;
    CurrentScenario current;
    SerialConfig serial{platform, state};
    ActionEditor actions{platform, state, current};
    ScenarioEditor scenarios{platform, state, current, serial, actions};

    EditorSite() {
        state.scenario.applicationFolder = folder.path();
        for (const char* name : {"Touche.ini", "Corres.ini", "TouFic.ini"})
            std::filesystem::copy_file(std::filesystem::path(KALVO_SHIPPED_DATA) / name,
                                       folder / name);
        std::filesystem::create_directory(folder / "Scenarios");
        createScenarioDatabase(folder / "Scen.mdb");
        state.database = engine.OpenDatabase(folder / "Scen.mdb");
    }

    void setPort(std::string_view key, std::string_view value) {
        WriteIniValue(profiles, port_serie::kSection, key, value, portSerieIni(folder.path()));
    }
    [[nodiscard]] std::string portSetting(std::string_view key) {
        return readPortSerie(profiles, folder.path(), key);
    }

    // A new scenario with these steps, as the user would enter it.
    void addScenario(const std::string& name, int type, const std::vector<std::string>& steps) {
        scenarios.createNew();
        scenarios.form.TxtNomScen = name;
        scenarios.chooseType(type);
        scenarios.save();
        for (const std::string& step : steps) actions.pick(step);
    }

    // The actions of the current scenario as "number:text:place", in their order.
    [[nodiscard]] std::vector<std::string> storedActions() const {
        std::vector<std::string> rows;
        const auto found = state.database->OpenRecordset(
            "SELECT NumAction,Champs,PlaceTrame FROM Actions WHERE NumeroScen=" +
            std::to_string(current.scenarioNumber) + " ORDER BY NumAction");
        for (; !found->Eof(); found->MoveNext())
            rows.push_back(textField(*found, "NumAction") + ":" + textField(*found, "Champs") +
                           ":" + textField(*found, "PlaceTrame"));
        return rows;
    }
};

inline constexpr int kEmulationRow = 0;
inline constexpr int kFileRow = 1;

}  // namespace kalvo::testing
