// A site on real files and a real database in a temporary folder; what the user sees, the
// keyboard and the port are fakes.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "core/run_time_state.h"
#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_engine.h"
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

struct Site {
    TemporaryFolder folder;
    FakePlatform world;
    SystemProfiles profiles;
    SystemFiles files;
    SqliteEngine engine;
    Platform platform{world.keyboard, world.port,    profiles,   world.registry, engine,     files,
                      world.events,   world.dialogs, world.icon, world.progress, world.watch};
    RunTimeState state;

    Site() {
        state.scenario.applicationFolder = folder.path();
        std::filesystem::create_directory(folder / "Scenarios");
        createScenarioDatabase(folder / "Scen.mdb");
        state.database = engine.OpenDatabase(folder / "Scen.mdb");
    }

    // The content of a file of the folder, byte for byte; empty when there is none.
    [[nodiscard]] std::string content(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
};

}  // namespace kalvo::testing
