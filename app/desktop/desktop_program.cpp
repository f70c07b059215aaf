#include "app/desktop/desktop_program.h"

#include <QApplication>
#include <span>
#include <utility>

#include "app/bindings/absent_devices.h"
#include "app/commands/command_context.h"
#include "core/during.h"
#include "core/frame_dispatch.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/xwayland.h"
#include "settings/application_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "transfer/file_replay_window.h"
#include "tray/about_window.h"

namespace kalvo {

namespace {

// Milliseconds between two looks at who has the focus: while something waits for it, and else.
constexpr int kTick = 200;
constexpr int kIdleTick = 3000;
constexpr int kFocusTries = 30;
constexpr int kFocusPause = 10;  // milliseconds

// Where nobody tells of the windows of others, ours are known at least.
class OwnWindowsOnly : public NoForegroundWindow {
public:
    bool foreign() override { return QApplication::activeWindow() == nullptr; }
};

// For the states of the icon behind the first.
std::array<QIcon, 3> stateSigns() {
    return {QIcon(":/icons/etat-sans-port.png"), QIcon(":/icons/etat-saisie.png"),
            QIcon(":/icons/etat-attention.png")};
}

}  // namespace

DesktopProgram::DesktopProgram(SystemBindings& bindings, bool ownSite)
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
          [this] { iconMenu_.popUp(); }),
      foreground_(connectForeground()),
      port_(createSerialPort(events_, *bindings.profiles, bindings.applicationFolder)),
      line_(*port_, localMilliseconds),
      journal_(bindings, events_,
               [this](std::string_view text) { notices_.notify(text, LogLevel::kWarning); }),
      turns_(
          platform(), state_, journal_.batches(),
          {.targetReady = [this] { return targetReady(); },
           .showSuspended =
               [this](std::string_view text) { suspension_.showText(toQString(text)); },
           .hideSuspended = [this] { suspension_.hide(); },
           .say = [this](std::string_view text, LogLevel level) { notices_.notify(text, level); },
           .typing = [this](bool on) { iconWatch_.typing(on); },
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
      iconMenu_({.useful = [this] { return usefulInIconMenu(); },
                 .choose = [this](MenuEntry entry) { chooseNow(entry); },
                 .showDashboard = [this] { whenIdle([this] { dashboard_.show(); }); },
                 .stopTyping = [this] { watch_.stop(); },
                 .retypeLast =
                     [this] {
                         events_.deliver([this] { turns_.retypeLast(); });
                         setPace();
                     }}),
      suspension_({.resume = [this] { events_.deliver([this] { turns_.resume(); }); },
                   .restartRecord = [this] { events_.deliver([this] { turns_.restartRecord(); }); },
                   .abandon = [this] { events_.deliver([this] { turns_.abandon(); }); }}),
      transferWindow_([this] { reception_.cancelTransfer(); }),
      settings_(platform(), state_, reception_, events_, bindings,
                [this] { return !turns_.busy() && targetReady(); }),
      dashboard_(platform(), state_, line_, journal_.file(), events_,
                 {.retype = [this](auto batch, const auto& bytes,
                                   auto fromPass) { retype(batch, bytes, fromPass); },
                  .tryManners = [this] { return tryManners(); },
                  .lastTarget = [this] { return lastTarget_; },
                  .lineBusy = [this] { return turns_.busy() || reception_.transferring(); },
                  .closeSettings = [this] { return settings_.close(); },
                  .reopenPort = [this] { settings_.reopenPort(); }}) {
    useManners();
    state_.scenario.applicationFolder = bindings.applicationFolder;
    if (ownSite) icon_.setSite("Dossier : " + toQString(bindings.applicationFolder));
    reception_.onTransfer([this](bool running) { transferWindow_.setVisible(running); });
    line_.onLineChange([this](bool lost) { lineChanged(lost); });
    QObject::connect(&clock_, &QTimer::timeout, &events_, [this] { look(); });
    setPace();
    clock_.start();
    QObject::connect(&menuWindow_, &QWidget::customContextMenuRequested, &events_,
                     [this] { iconMenu_.popUp(); });
    if (throughXwayland()) icon_.setMenu(&iconMenu_);
}

void DesktopProgram::run(EndSignals& signals) {
    signals.start([this] { events_.requestEnd(); },
                  [this] { events_.post([this] { reception_.transfer(); }); });
    events_.post([this] { load(); });
    events_.run();
    signals.stop();
    shutDown();
}

void DesktopProgram::shutDown() {
    // A file transfer that ends with it opens our port again.
    settings_.end();
    resumeNext([this] {
        if (line_.PortOpen()) line_.setPortOpen(false);
    });
    icon_.remove();
}

// Settings that are open and not stored may keep the program from ending.
void DesktopProgram::choose(MenuEntry entry) {
    if (entry == MenuEntry::kQuit && !settings_.close()) return;
    menu_.choose(entry);
}

void DesktopProgram::chooseNow(MenuEntry entry) {
    if (entry == MenuEntry::kQuit)
        events_.deliver([&] { choose(entry); });
    else
        whenIdle([this, entry] { choose(entry); });
}

// What would begin something new waits until typing has come to its end.
void DesktopProgram::whenIdle(const std::function<void()>& begin) {
    if (turns_.busy())
        events_.post(begin);
    else
        events_.deliver(begin);
}

IconMenuWindow::Useful DesktopProgram::usefulInIconMenu() {
    foreground_->remember();
    return {.transfer = menu_.useful(MenuEntry::kTransfer),
            .stop = turns_.busy(),
            .retype = !turns_.busy() && !turns_.suspended()};
}

void DesktopProgram::showReplay() {
    auto* const window = new FileReplayWindow(
        ReplayForm(platform(), state_.scenario,
                   [this](const auto& replay) { turns_.typeOther(replay); }),
        [this](const std::function<void()>& handler) { events_.deliver(handler); },
        [this] { foreground_->giveBack(); });
    window->show();
    window->activateWindow();
}

void DesktopProgram::dispatch() {
    transferWindow_.hide();
    turns_.dispatch();
    iconWatch_.countWaiting();
    setPace();
}

void DesktopProgram::retype(std::int64_t batch, const std::string& bytes, std::int32_t fromPass) {
    turns_.retype(batch, bytes, fromPass);
    iconWatch_.countWaiting();
    setPace();
}

std::optional<MannerTrial> DesktopProgram::tryManners() {
    std::optional<MannerTrial> trial;
    turns_.typeOther([&]() -> std::optional<BatchReport> {
        if (!targetReady()) {
            dialogs_.message("Aucune application n'est devant : rien n'a été saisi."_ansi,
                             kApplicationTitle, MessageIcon::kExclamation);
            return std::nullopt;
        }
        const During trying([this](bool on) {
            if (!on) useManners();
        });
        trial = kalvo::tryManners(platform());
        return std::nullopt;
    });
    if (trial && !trial->application.empty()) lastTarget_ = {trial->application};
    return trial;
}

void DesktopProgram::useManners() {
    keyboard_.useManners(
        [this, manners = applicationManners(*bindings_.profiles, bindings_.applicationFolder,
                                            [this](std::string_view text) {
                                                log_->write(LogLevel::kWarning, text);
                                            })](std::span<const std::string> names) {
            lastTarget_.assign(names.begin(), names.end());
            return manners(names);
        });
}

// The window manager takes a moment to give the focus back.
bool DesktopProgram::targetReady() {
    settings_.makeWay();
    menuWindow_.makeWay();
    for (int tries = 0; tries < kFocusTries && !foreground_->foreign(); ++tries)
        events_.Sleep(kFocusPause);
    return foreground_->foreign();
}

void DesktopProgram::batchDone(const BatchReport& report) {
    journal_.forgetDaily();
    dashboard_.refresh();
    const Aftermath aftermath = aftermathOf(platform(), state_, report);
    if (aftermath.notice) icon_.notify(shortText(report), levelOf(report));
    if (aftermath.eraseQuestion) settings_.askForErase();
}

void DesktopProgram::look() {
    if (turns_.busy()) return;
    foreground_->remember();
    events_.deliver([this] { turns_.tick(); });
    tellOfKeyboard();
    setPace();
}

// A window of the compositor's own kind would take the focus from what is typed into.
void DesktopProgram::typingBegins() {
    if (!stopKeySeen_ && QGuiApplication::platformName() == "xcb") stopWindow_.begin();
}

void DesktopProgram::setPace() {
    const bool pending = turns_.pending();
    const int interval = pending ? kTick : kIdleTick;
    if (clock_.interval() == interval) return;
    clock_.setTimerType(pending ? Qt::CoarseTimer : Qt::VeryCoarseTimer);
    clock_.setInterval(interval);
}

// Said in the icon's own bubble: nobody has to answer for work to go on.
void DesktopProgram::lineChanged(bool lost) {
    iconWatch_.lineLost(lost);
    notices_.notify(lineChangeText(line_, lost),
                    lost ? LogLevel::kWarning : LogLevel::kInformation);
}

void DesktopProgram::showError(const RuntimeError& error) {
    dialogs_.message(errorText(error), kApplicationTitle, MessageIcon::kCritical);
}

// What types, and what is to be known of it.
QString DesktopProgram::keyboardText() {
    const std::string remark = keyboardRemark(keyboard_);
    return toQString(std::string(keyboard_.name()) + (remark.empty() ? "" : ". ") + remark);
}

// A stand-in where the session shows no windows, which is said.
std::unique_ptr<ForegroundWindow> DesktopProgram::connectForeground() {
    try {
        return watchForegroundWindow(bindings_.keyboard);
    } catch (const RuntimeError& error) {
        log_->write(LogLevel::kWarning, error.description());
        writeErrorLine(error.description());
        return std::make_unique<OwnWindowsOnly>();
    }
}

Platform DesktopProgram::platform() {
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

}  // namespace kalvo
