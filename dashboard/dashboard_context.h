// What the pages of the dashboard work with.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/run_time_state.h"
#include "dashboard/batch_desk.h"
#include "platform/journal_file.h"
#include "platform/platform.h"

namespace kalvo {

// What the program around the window does for it.
struct DashboardServices {
    // Runs what a control does as an event of the program, which shows its errors.
    std::function<void(const std::function<void()>&)> deliver;
    BatchDesk::Retype retype;
    // Closes the settings window; false when the user wants to store something first.
    std::function<bool()> closeSettings;
};

// Everything in it outlives the window.
struct DashboardContext {
    Platform platform;
    RunTimeState& state;
    JournalFile* journal = nullptr;  // null while batches are not kept
    DashboardServices services;
};

}  // namespace kalvo
