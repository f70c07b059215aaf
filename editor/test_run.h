// The test of a scenario from its editor.
#pragma once

#include <functional>

#include "core/run_time_state.h"
#include "editor/current_scenario.h"
#include "platform/platform.h"

namespace kalvo {

// What the desktop does for a test.
struct TestDesktop {
    // Brings windows of ours down, so that the user sees his application.
    std::function<void()> minimise;
    // Gets windows of ours out of the way; whether an application has the focus then.
    std::function<bool()> targetReady;
};

// Asks for the fields of four simulated frames (cancelling one ends the test), compiles and loads
// the scenario, leaves the user two seconds to bring the target application to the front, and
// types (or writes) the result. Afterwards the scenario that was in force is so again.
// RuntimeErrors of the database.
void runScenarioTest(const Platform& platform, RunTimeState& state, const CurrentScenario& current,
                     const TestDesktop& desktop);

// Brings windows of ours down and leaves the user two seconds to bring the target application
// to the front.
void leaveTimeToChangeWindow(const Platform& platform, const TestDesktop& desktop);

// Whether there is an application to type into now; says so if there is none.
[[nodiscard]] bool targetReady(const Platform& platform, const TestDesktop& desktop);

}  // namespace kalvo
