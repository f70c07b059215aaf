#include "app/desktop/display_loss.h"

#include <QString>
#include <QtGlobal>
#include <cstdlib>
#include <string_view>

#include "app/bindings/system_bindings.h"
#include "app/commands/command_line.h"
#include "app/console_user_interface.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kNoDisplay =
    "Aucun affichage n'est accessible : le programme de bureau a besoin d'une session X11 (variable DISPLAY), XWayland compris ; sans affichage, utilisez kalvo-horizon listen."_ansi;

Log* lossLog = nullptr;
QtMessageHandler otherMessages = nullptr;

// Everything that matters is on the disk already, and whatever the usual way out would do
// could ask the lost display once more.
[[noreturn]] void end(std::string_view text) {
    if (lossLog != nullptr) lossLog->write(LogLevel::kError, text);
    writeErrorLine(text);
    std::_Exit(kExitFailure);
}

[[noreturn]] void displayLost() {
    end("L'affichage a été perdu : le programme s'arrête. Les lots reçus sont dans le journal."_ansi);
}

void onToolkitMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith("The X11 connection broke")) displayLost();
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
    if (displayNamed() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return true;
    writeErrorLine(kNoDisplay);
    return false;
}

LoggedDisplayLoss::LoggedDisplayLoss(Log& log) { lossLog = &log; }

LoggedDisplayLoss::~LoggedDisplayLoss() { lossLog = nullptr; }

}  // namespace kalvo
