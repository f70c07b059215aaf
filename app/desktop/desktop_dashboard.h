// The dashboard side of the desktop program.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/manner_trial.h"
#include "core/reception/line_tap.h"
#include "core/run_time_state.h"
#include "dashboard/windows/dashboard_window.h"
#include "platform/archive.h"
#include "platform/journal_file.h"
#include "platform/platform.h"
#include "platform/qt/qt_event_pump.h"

namespace kalvo {

class DesktopDashboard {
public:
    // What the program does for it.
    struct Program {
        // Types a batch, or tries an application, as its own turn at typing.
        std::function<void(std::int64_t batch, const std::string& bytes, std::int32_t fromPass)>
            retype;
        std::function<std::optional<MannerTrial>()> tryManners;
        std::function<std::vector<std::string>()> lastTarget;
        std::function<bool()> lineBusy;
        std::function<bool()> closeSettings;
        std::function<void()> reopenPort;
    };

    // Everything given here outlives it; `journal` is null while batches are not kept.
    DesktopDashboard(const Platform& platform, RunTimeState& state, LineTap& line,
                     JournalFile* journal, QtEventPump& events, Program program);

    // One window, which keeps what it shows while it is hidden.
    void show();
    // A batch is done with.
    void refresh();

private:
    [[nodiscard]] DashboardServices services();

    Platform platform_;
    RunTimeState& state_;
    LineTap& line_;
    JournalFile* journal_;
    QtEventPump& events_;
    Program program_;
    std::unique_ptr<ArchiveFormat> archive_;
    std::unique_ptr<DashboardWindow> window_;
};

}  // namespace kalvo
