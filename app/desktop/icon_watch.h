// The icon as it has to look, on a desktop whose notification area comes and goes.
#pragma once

#include <QTimer>
#include <cstdint>
#include <optional>

#include "app/run_journal.h"
#include "core/icon_state.h"
#include "platform/qt/qt_notify_icon.h"
#include "platform/serial_port.h"
#include "tray/menu_window.h"

namespace kalvo {

class IconWatch {
public:
    // Everything given here outlives it.
    IconWatch(QtNotifyIcon& icon, MenuWindow& menu, SerialPort& port, RunJournal& journal);

    // The icon has been made. From now on its picture follows the port, and a window takes
    // its place while there is no notification area.
    void begin();

    void lineLost(bool lost);
    void typing(bool on);
    // Batches may have begun to wait, or no longer do: looked at when the journal has changed.
    void countWaiting();

private:
    void look();
    void show();

    QtNotifyIcon& icon_;
    MenuWindow& menu_;
    SerialPort& port_;
    RunJournal& journal_;
    ProgramCondition condition_;
    std::optional<std::uint64_t> counted_;  // the journal's changes() then
    int looksWithoutArea_ = 0;
    QTimer timer_;
};

}  // namespace kalvo
