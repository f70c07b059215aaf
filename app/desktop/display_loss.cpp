#include "app/desktop/display_loss.h"

#include <QString>
#include <QtGlobal>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <thread>

#include "app/bindings/system_bindings.h"
#include "app/commands/command_line.h"
#include "app/console_user_interface.h"
#include "app/process/process_start.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kNoDisplay =
    "Aucun affichage n'est accessible : le programme de bureau a besoin d'une session X11 (variable DISPLAY) ou Wayland (WAYLAND_DISPLAY) ; sans affichage, utilisez kalvo-horizon listen."_ansi;

// In the environment of the run that follows a loss.
constexpr const char* kAwaited = "KALVO_AWAITS_DISPLAY";

constexpr std::chrono::minutes kPatience{2};
constexpr std::chrono::milliseconds kLookInterval{500};
// A session that begins again starts its programs, maybe this one, too: it comes first.
constexpr std::chrono::seconds kSessionStart{3};

Log* lossLog = nullptr;
QtMessageHandler otherMessages = nullptr;
bool cameBack = false;

void say(std::string_view text) {
    if (lossLog != nullptr) lossLog->write(LogLevel::kError, text);
    writeErrorLine(text);
}

// Everything that matters is on the disk already, and whatever the usual way out would do
// could ask the lost display once more.
[[noreturn]] void end(std::string_view text) {
    say(text);
    std::_Exit(kExitFailure);
}

[[noreturn]] void displayLost() {
    say("L'affichage a été perdu : le programme attend son retour, deux minutes au plus. Les lots reçus sont dans le journal."_ansi);
    qputenv(kAwaited, "1");
    restartProcess();
    end("Le programme n'a pas pu recommencer : il s'arrête."_ansi);
}

bool awaitDisplay() {
    const auto last = std::chrono::steady_clock::now() + kPatience;
    while (!displayAnswers()) {
        if (std::chrono::steady_clock::now() > last) return false;
        std::this_thread::sleep_for(kLookInterval);
    }
    std::this_thread::sleep_for(kSessionStart);
    return displayAnswers();
}

void onToolkitMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith("The X11 connection broke") || text.startsWith("The Wayland connection "))
        displayLost();
    // Why the toolkit does not start; it would abort now.
    if (type == QtFatalMsg && text.contains("platform plugin")) end(kNoDisplay);
    if (!text.contains("could not connect to display") &&
        !text.contains("Could not load the Qt platform plugin"))
        otherMessages(type, context, text);
}

}  // namespace

bool watchDisplay() {
    otherMessages = qInstallMessageHandler(onToolkitMessage);
    onDisplayLoss(displayLost);
    if (qEnvironmentVariableIsSet(kAwaited)) {
        qunsetenv(kAwaited);
        cameBack = awaitDisplay();
        if (!cameBack) writeErrorLine("L'affichage n'est pas revenu : le programme s'arrête."_ansi);
        return cameBack;
    }
    if (displayNamed() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return true;
    writeErrorLine(kNoDisplay);
    return false;
}

bool displayCameBack() { return cameBack; }

LoggedDisplayLoss::LoggedDisplayLoss(Log& log) { lossLog = &log; }

LoggedDisplayLoss::~LoggedDisplayLoss() { lossLog = nullptr; }

}  // namespace kalvo
