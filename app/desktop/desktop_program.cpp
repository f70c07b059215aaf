#include "app/desktop/desktop_program.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <QVBoxLayout>
#include <array>
#include <memory>

#include "app/application_folder.h"
#include "app/bindings/absent_devices.h"
#include "app/commands/command_context.h"
#include "app/desktop/desktop_settings.h"
#include "app/desktop/display_loss.h"
#include "app/desktop/icon_watch.h"
#include "app/logged_user_interface.h"
#include "app/process/end_signals.h"
#include "app/reconnecting_keyboard.h"
#include "app/run_journal.h"
#include "app/run_log.h"
#include "app/running_site.h"
#include "app/session_watch.h"
#include "app/sites.h"
#include "core/during.h"
#include "core/line_tap.h"
#include "core/serial_reception.h"
#include "core/start_up.h"
#include "core/typing_turns.h"
#include "dashboard/site_copies.h"
#include "dashboard/windows/dashboard_window.h"
#include "platform/qt/pictogram.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_notify_icon.h"
#include "platform/qt/qt_progress.h"
#include "platform/qt/qt_text.h"
#include "settings/application_paths.h"
#include "settings/application_settings.h"
#include "settings/options.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "transfer/file_replay_window.h"
#include "tray/about_window.h"
#include "tray/icon_menu_window.h"
#include "tray/menu_window.h"
#include "tray/suspension_window.h"
#include "tray/transfer_window.h"
#include "tray/tray_menu.h"

namespace kalvo {

namespace {

// Milliseconds between two looks at who has the focus: while something waits for it, and else.
constexpr int kTick = 200;
constexpr int kIdleTick = 3000;
constexpr int kFocusTries = 30;
constexpr int kFocusPause = 10;     // milliseconds
constexpr int kFocusSettles = 150;  // milliseconds

// The splash window frmSplach.
class SplashWindow : public QWidget {
public:
    SplashWindow()
        : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
        setObjectName("frmSplach");
        setAttribute(Qt::WA_ShowWithoutActivating);
        auto* const layout = new QVBoxLayout(this);
        auto* const title = new QLabel("<h2>KALVO Horizon</h2>");
        auto* const loading = new QLabel("Chargement en cours ...");
        loading->setObjectName("Lblchargement");
        layout->addWidget(title);
        layout->addWidget(loading);
    }
};

// For the states of the icon behind the first.
std::array<QIcon, 3> stateSigns() {
    return {QIcon(":/icons/etat-sans-port.png"), QIcon(":/icons/etat-saisie.png"),
            QIcon(":/icons/etat-attention.png")};
}

class DesktopProgram {
public:
    // `ownSite`: the folder was asked for, and other programs may have others.
    DesktopProgram(SystemBindings& bindings, bool ownSite)
        : bindings_(bindings),
          log_(openLog(bindings.applicationFolder)),
          events_([this](const RuntimeError& error) { showError(error); }),
          progress_([this] { events_.draw(); }),
          icon_(
              QApplication::windowIcon(), stateSigns(),
              [this] {
                  foreground_->remember();
                  menuWindow_.popUp();
              },
              [this] { showIconMenu(); }),
          foreground_(connected<ForegroundWindow, NoForegroundWindow>(
              [&] { return watchForegroundWindow(bindings.keyboard); })),
          port_(createSerialPort(events_, *bindings.profiles, bindings.applicationFolder)),
          line_(*port_, localMilliseconds),
          journal_(bindings, events_, [this](std::string_view text) { notices_.notify(text); }),
          turns_(platform(), state_, journal_.batches(),
                 {.targetReady = [this] { return targetReady(); },
                  .showSuspended =
                      [this](std::string_view text) { suspension_.showText(toQString(text)); },
                  .hideSuspended = [this] { suspension_.hide(); },
                  .say = [this](std::string_view text) { notices_.notify(text); },
                  .done = [this](const BatchReport& report) { batchDone(report); }}),
          reception_(platform(), state_, journal_.batches(), [this] { dispatch(); }),
          menu_(platform(), state_, reception_,
                {.showSettings = [this] { settings_.ask(); },
                 .showAbout = [this] { AboutWindow(KALVO_VERSION, keyboardText()).exec(); },
                 .showReplay = [this] { showReplay(); },
                 .endProgram = [this] { events_.requestEnd(); },
                 .replayTurn = [this](const auto& replay) { turns_.typeOther(replay); }}),
          menuWindow_(
              *foreground_, [this](MenuEntry entry) { chooseNow(entry); },
              [this](MenuEntry entry) { return menu_.useful(entry); }),
          iconMenu_({.choose = [this](MenuEntry entry) { chooseNow(entry); },
                     .showDashboard = [this] { whenIdle([this] { showDashboard(); }); },
                     .stopTyping = [this] { watch_.stop(); },
                     .retypeLast =
                         [this] {
                             events_.deliver([this] { turns_.retypeLast(); });
                             setPace();
                         }}),
          suspension_(
              {.resume = [this] { events_.deliver([this] { turns_.resume(); }); },
               .restartRecord = [this] { events_.deliver([this] { turns_.restartRecord(); }); },
               .abandon = [this] { events_.deliver([this] { turns_.abandon(); }); }}),
          transferWindow_([this] { reception_.cancelTransfer(); }),
          settings_(platform(), state_, reception_, events_, bindings,
                    [this] { return !turns_.busy() && targetReady(); }) {
        keyboard_.useManners(applicationManners(
            *bindings.profiles, bindings.applicationFolder,
            [this](std::string_view text) { log_->write(LogLevel::kWarning, text); }));
        state_.scenario.applicationFolder = bindings.applicationFolder;
        if (ownSite) icon_.setSite("Dossier : " + toQString(bindings.applicationFolder));
        reception_.onTransfer([this](bool running) { transferWindow_.setVisible(running); });
        line_.onLineChange([this](bool lost) { lineChanged(lost); });
        QObject::connect(&clock_, &QTimer::timeout, &events_, [this] {
            if (turns_.busy()) return;
            foreground_->remember();
            events_.deliver([this] { turns_.tick(); });
            setPace();
        });
        setPace();
        clock_.start();
        QObject::connect(&menuWindow_, &QWidget::customContextMenuRequested, &events_,
                         [this] { showIconMenu(); });
    }

    void run(EndSignals& signals) {
        signals.start([this] { events_.requestEnd(); },
                      [this] { events_.post([this] { reception_.transfer(); }); });
        events_.post([this] { load(); });
        events_.run();
        signals.stop();
        shutDown();
    }

private:
    // The load event of the hidden main window. Whatever fails in one step is shown and
    // leaves the others.
    void load() {
        // A window manager may well give the focus to the splash.
        foreground_->remember();
        PortStart port = PortStart::kDone;
        events_.deliver([&] {
            port = startUp(
                platform(), state_, reception_, [this] { settings_.show(); },
                [this] { prepareUnderSplash(); });
        });
        events_.deliver([&] { settings_.offerWayOut(port); });
        copyDatabase();
        journal_.begin();
        if (const std::string remark = keyboardRemark(keyboard_); !remark.empty())
            notices_.notify(remark);
        iconWatch_.begin();
        if (newSite_) events_.deliver([this] { settings_.offerAssistant(); });
    }

    // A database that could not be opened has been complained of.
    void copyDatabase() {
        if (!state_.database) return;
        try {
            keepDailyCopy(platform(), bindings_.applicationFolder);
        } catch (const RuntimeError& error) {
            notices_.notify(
                std::string("La copie du jour des scénarios n'a pas pu être faite : "_ansi) +
                error.description());
        }
    }

    void prepareUnderSplash() {
        const During splash([this, window = std::make_shared<SplashWindow>()](bool on) {
            window->setVisible(on);
            if (!on) foreground_->giveBack();
        });
        events_.DoEvents();
        newSite_ = !bindings_.files->fileExists(portSerieIni(bindings_.applicationFolder));
        prepareApplicationFolder(*bindings_.files, dialogs_, bindings_.applicationFolder,
                                 bindings_.shippedData);
    }

    void shutDown() {
        // A file transfer that ends with it opens our port again.
        settings_.end();
        resumeNext([this] {
            if (line_.PortOpen()) line_.setPortOpen(false);
        });
        icon_.remove();
    }

    // Settings that are open and not stored may keep the program from ending.
    void choose(MenuEntry entry) {
        if (entry == MenuEntry::kQuit && !settings_.close()) return;
        menu_.choose(entry);
    }

    void chooseNow(MenuEntry entry) {
        if (entry == MenuEntry::kQuit)
            events_.deliver([&] { choose(entry); });
        else
            whenIdle([this, entry] { choose(entry); });
    }

    // What would begin something new waits until typing has come to its end.
    void whenIdle(const std::function<void()>& begin) {
        if (turns_.busy())
            events_.post(begin);
        else
            events_.deliver(begin);
    }

    void showIconMenu() {
        foreground_->remember();
        iconMenu_.popUp(menu_.useful(MenuEntry::kTransfer), turns_.busy(),
                        !turns_.busy() && !turns_.suspended());
    }

    void dispatch() {
        transferWindow_.hide();
        const During typing([this](bool on) { iconWatch_.typing(on); });
        turns_.dispatch();
        setPace();
    }

    void setPace() {
        const bool pending = turns_.pending();
        const int interval = pending ? kTick : kIdleTick;
        if (clock_.interval() == interval) return;
        clock_.setTimerType(pending ? Qt::CoarseTimer : Qt::VeryCoarseTimer);
        clock_.setInterval(interval);
    }

    // The window manager takes a moment to give the focus back.
    bool targetReady() {
        settings_.makeWay();
        menuWindow_.makeWay();
        for (int tries = 0; tries < kFocusTries && !foreground_->foreign(); ++tries)
            events_.Sleep(kFocusPause);
        return foreground_->foreign();
    }

    void batchDone(const BatchReport& report) {
        if (!report.whole()) iconWatch_.countWaiting();
        if (dashboard_ && dashboard_->isVisible()) dashboard_->refresh();
        if (isSet(Option::kNotifications) || !report.whole()) icon_.notify(shortText(report));
        // What went nowhere must stay where it is.
        const bool mayForget = report.whole() || !isSet(Option::kEraseAfterSuccess);
        if (pushesBatches(state_.TerminalType) && mayForget) settings_.askForErase();
    }

    [[nodiscard]] bool isSet(Option option) {
        return optionSet(*bindings_.profiles, bindings_.applicationFolder, option);
    }

    void showDashboard() {
        if (!dashboard_)
            dashboard_ = std::make_unique<DashboardWindow>(DashboardContext{
                platform(),
                state_,
                line_,
                journal_.file(),
                archive_.get(),
                {.deliver = [this](const auto& handler) { events_.deliver(handler); },
                 .retype =
                     [this](std::int64_t batch, std::string bytes, std::int32_t fromPass) {
                         retype(batch, std::move(bytes), fromPass);
                     },
                 .lineBusy = [this] { return turns_.busy() || reception_.transferring(); },
                 .closeSettings = [this] { return settings_.close(); }}});
        dashboard_->show();
        dashboard_->raise();
        dashboard_->activateWindow();
    }

    // Once the focus has settled behind a question that was asked.
    void retype(std::int64_t batch, std::string bytes, std::int32_t fromPass) {
        QTimer::singleShot(kFocusSettles, &events_, [this, batch, bytes, fromPass] {
            events_.deliver([&] {
                const During typing([this](bool on) { iconWatch_.typing(on); });
                turns_.retype(batch, bytes, fromPass);
                iconWatch_.countWaiting();
            });
            setPace();
        });
    }

    void showReplay() {
        auto* const window = new FileReplayWindow(
            ReplayForm(platform(), state_.scenario,
                       [this](const auto& replay) { turns_.typeOther(replay); }),
            [this](const std::function<void()>& handler) { events_.deliver(handler); },
            [this] { foreground_->giveBack(); });
        window->show();
        window->activateWindow();
    }

    void showError(const RuntimeError& error) {
        dialogs_.message(errorText(error), kApplicationTitle, MessageIcon::kCritical);
    }

    // Said in the icon's own bubble: nobody has to answer for work to go on.
    void lineChanged(bool lost) {
        iconWatch_.lineLost(lost);
        notices_.notify(lineChangeText(line_, lost));
    }

    // A binding to the display; a stand-in where there is none, which is said.
    template <typename Interface, typename Absent>
    std::unique_ptr<Interface> connected(
        const std::function<std::unique_ptr<Interface>()>& connect) {
        try {
            return connect();
        } catch (const RuntimeError& error) {
            log_->write(LogLevel::kWarning, error.description());
            writeErrorLine(error.description());
            return std::make_unique<Absent>();
        }
    }

    // What types, and what is to be known of it.
    QString keyboardText() {
        const std::string remark = keyboardRemark(keyboard_);
        return toQString(std::string(keyboard_.name()) + (remark.empty() ? "" : ". ") + remark);
    }

    Platform platform() {
        return {keyboard_,
                line_,
                *bindings_.profiles,
                *bindings_.registry,
                *bindings_.databases,
                *bindings_.files,
                events_,
                dialogs_,
                notices_,
                progress_,
                watch_,
                *log_};
    }

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
    SessionWatch watch_{bindings_};
    std::unique_ptr<SerialPort> port_;
    LineTap line_;
    std::unique_ptr<ArchiveFormat> archive_ = createArchiveFormat();
    RunJournal journal_;
    TypingTurns turns_;
    SerialReception reception_;
    TrayMenu menu_;
    MenuWindow menuWindow_;
    IconMenuWindow iconMenu_;
    SuspensionWindow suspension_;
    QTimer clock_;
    TransferWindow transferWindow_;
    IconWatch iconWatch_{icon_, menuWindow_, line_, journal_};
    DesktopSettings settings_;
    std::unique_ptr<DashboardWindow> dashboard_;
    bool newSite_ = false;  // no serial settings before this start
};

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/icons/kalvo-horizon-%1.png").arg(size));
    return icon;
}

// The toolkit's own texts in French, whatever the session speaks: so are ours.
void speakFrench(QTranslator& translator) {
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    if (translator.load("qtbase_fr", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);
}

// A signal closes the box, too.
int refuseSecond(EndSignals& signals) {
    QObject box;
    signals.start(
        [&box] {
            QMetaObject::invokeMethod(
                &box, [] { QApplication::exit(); }, Qt::QueuedConnection);
        },
        [] {});
    QtDialogs().message("Application déjà active !"_ansi, kApplicationTitle,
                        MessageIcon::kCritical);
    signals.stop();
    return kExitFailure;
}

}  // namespace

int runDesktop(const CommandLine& line, SystemBindings& bindings) {
    if (!watchDisplay()) return kExitFailure;
    // Before any thread starts, so that the signals go where they are waited for.
    EndSignals signals;
    int argumentCount = 1;
    std::string programName = "kalvo-horizon";
    std::array<char*, 2> arguments = {programName.data(), nullptr};
    const QApplication application(argumentCount, arguments.data());
    QApplication::setStyle(new PictogramStyle);
    QApplication::setDesktopFileName("kalvo-horizon");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programIcon());
    QTranslator translator;
    speakFrench(translator);

    const RunningSite site(bindings.applicationFolder, "Programme de bureau", localNow());
    if (!site.alone()) return displayCameBack() ? kExitFailure : refuseSecond(signals);
    rememberSite(*bindings.profiles, knownSitesFile(), bindings.applicationFolder);
    DesktopProgram(bindings, line.applicationFolder.has_value()).run(signals);
    return kExitSuccess;
}

}  // namespace kalvo
