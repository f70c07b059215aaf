// The desktop program: tray icon, windows, and the run-time side behind them.
#pragma once

#include <QIcon>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/bindings/system_bindings.h"
#include "app/desktop/desktop_dashboard.h"
#include "app/desktop/desktop_settings.h"
#include "app/desktop/display_loss.h"
#include "app/desktop/icon_watch.h"
#include "app/logged_user_interface.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "app/run_journal.h"
#include "app/run_log.h"
#include "app/session_watch.h"
#include "core/manner_trial.h"
#include "core/reception/line_tap.h"
#include "core/reception/serial_reception.h"
#include "core/typing_turns.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_notify_icon.h"
#include "platform/qt/qt_progress.h"
#include "tray/icon_menu_window.h"
#include "tray/menu_window.h"
#include "tray/stop_window.h"
#include "tray/suspension_window.h"
#include "tray/transfer_window.h"
#include "tray/tray_menu.h"

namespace kalvo {

class DesktopProgram {
public:
    // `ownSite`: the folder was asked for, and other programs may have others.
    DesktopProgram(SystemBindings& bindings, bool ownSite);
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;

    // Until the user quits or a signal asks for the end.
    void run(EndSignals& signals);

private:
    void load();
    void tellOfKeyboard();
    void prepareUnderSplash();
    void copyDatabase();
    void shutDown();

    void choose(MenuEntry entry);
    void chooseNow(MenuEntry entry);
    void whenIdle(const std::function<void()>& begin);
    [[nodiscard]] IconMenuWindow::Useful usefulInIconMenu();
    void showReplay();

    void dispatch();
    void retype(std::int64_t batch, const std::string& bytes, std::int32_t fromPass);
    [[nodiscard]] std::optional<MannerTrial> tryManners();
    void useManners();
    [[nodiscard]] bool targetReady();
    void batchDone(const BatchReport& report);
    void typingBegins();
    void look();
    void setPace();

    void lineChanged(bool lost);
    void showError(const RuntimeError& error);
    [[nodiscard]] QString keyboardText();
    [[nodiscard]] std::unique_ptr<ForegroundWindow> connectForeground();
    [[nodiscard]] Platform platform();

    SystemBindings& bindings_;
    RunTimeState state_;
    std::unique_ptr<Log> log_;
    LoggedDisplayLoss displayLoss_{*log_};
    RunLog run_{*log_, bindings_.applicationFolder, "Programme de bureau"};
    QtDialogs boxes_;
    LoggedDialogs dialogs_{boxes_, *log_};
    QtEventPump events_;
    QtProgress progress_;
    QtNotifyIcon icon_;
    LoggedNotifyIcon notices_{icon_, *log_};
    std::unique_ptr<ForegroundWindow> foreground_;
    ReconnectingKeyboard keyboard_{[this] { return connectKeyboard(bindings_.keyboard); }};
    SessionWatch watch_{bindings_, [this] { typingBegins(); }};
    std::unique_ptr<SerialPort> port_;
    LineTap line_;
    RunJournal journal_;
    TypingTurns turns_;
    SerialReception reception_;
    TrayMenu menu_;
    MenuWindow menuWindow_;
    IconMenuWindow iconMenu_;
    SuspensionWindow suspension_;
    StopWindow stopWindow_{[this] { return turns_.busy(); }, [this] { watch_.stop(); }};
    bool stopKeySeen_ = stopKeySeen(bindings_.keyboard);
    QTimer clock_;
    TransferWindow transferWindow_;
    IconWatch iconWatch_{icon_, menuWindow_, line_, journal_};
    DesktopSettings settings_;
    DesktopDashboard dashboard_;
    std::vector<std::string> lastTarget_;  // names of the application typed into last
    std::string keyboardTold_;
    bool newSite_ = false;  // no serial settings before this start
};

}  // namespace kalvo
