#include "app/desktop/desktop_dashboard.h"

#include <QTimer>
#include <utility>

#include "app/bindings/system_bindings.h"

namespace kalvo {

namespace {

constexpr int kFocusSettles = 150;  // milliseconds

}  // namespace

DesktopDashboard::DesktopDashboard(const Platform& platform, RunTimeState& state, LineTap& line,
                                   JournalFile* journal, QtEventPump& events, Program program)
    : platform_(platform),
      state_(state),
      line_(line),
      journal_(journal),
      events_(events),
      program_(std::move(program)),
      archive_(createArchiveFormat()) {}

void DesktopDashboard::show() {
    if (!window_)
        window_ = std::make_unique<DashboardWindow>(
            DashboardContext{platform_, state_, line_, journal_, *archive_, services()});
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void DesktopDashboard::refresh() {
    if (window_ && window_->isVisible()) window_->refresh();
}

DashboardServices DesktopDashboard::services() {
    return {.deliver = [this](const auto& handler) { events_.deliver(handler); },
            // Once the focus has settled behind a question that was asked.
            .retype =
                [this](std::int64_t batch, std::string bytes, std::int32_t fromPass) {
                    QTimer::singleShot(kFocusSettles, &events_, [this, batch, bytes, fromPass] {
                        events_.deliver([&] { program_.retype(batch, bytes, fromPass); });
                    });
                },
            .lineBusy = program_.lineBusy,
            .closeSettings = program_.closeSettings,
            .reopenPort = program_.reopenPort,
            .lastTarget = program_.lastTarget,
            .tryManners = program_.tryManners};
}

}  // namespace kalvo
