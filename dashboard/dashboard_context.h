// What the pages of the dashboard work with.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/manner_trial.h"
#include "core/reception/line_tap.h"
#include "core/run_time_state.h"
#include "dashboard/batch_desk.h"
#include "platform/archive.h"
#include "platform/journal_file.h"
#include "platform/platform.h"

namespace kalvo {

// What the program around the window does for it.
struct DashboardServices {
    // Runs what a control does as an event of the program, which shows its errors.
    std::function<void(const std::function<void()>&)> deliver;
    BatchDesk::Retype retype;
    // Whether something is being received from a scanner, or typed.
    std::function<bool()> lineBusy;
    // Closes the settings window; false when the user wants to store something first.
    std::function<bool()> closeSettings;
    // Closes the port and opens it as its settings say now; says what goes wrong.
    std::function<void()> reopenPort;
    // The names of the application typed into last, the one that counts most first; none
    // while that is not known.
    std::function<std::vector<std::string>()> lastTarget;
    // Tries how to type into the application in front, once windows of ours have made way;
    // nothing, and said, where nothing can be typed now.
    std::function<std::optional<MannerTrial>()> tryManners;
};

// Everything in it outlives the window.
struct DashboardContext {
    Platform platform;
    RunTimeState& state;
    LineTap& line;                   // the platform's port
    JournalFile* journal = nullptr;  // null while batches are not kept
    ArchiveFormat& archive;
    DashboardServices services;
};

}  // namespace kalvo
