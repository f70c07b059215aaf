// A site with an empty scenario database.
#pragma once

#include "core/run_time_state.h"
#include "platform/sqlite/schema.h"
#include "tests/support/fake_platform.h"

namespace kalvo::testing {

struct Site {
    FakePlatform world;
    TemporaryFolder& folder = world.folder;
    SystemProfiles& profiles = world.profiles;
    DiskFiles& files = world.files;
    Platform& platform = world.platform;
    RunTimeState state;

    Site() {
        state.scenario.applicationFolder = folder.path();
        createScenarioDatabase(folder / "Scen.mdb");
        state.database = world.databases.OpenDatabase(folder / "Scen.mdb");
    }
};

}  // namespace kalvo::testing
