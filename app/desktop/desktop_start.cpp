// How the desktop program comes up.
#include <memory>
#include <string>

#include "app/application_folder.h"
#include "app/desktop/desktop_program.h"
#include "app/desktop/splash_window.h"
#include "core/during.h"
#include "core/start_up.h"
#include "dashboard/site_copies.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// The load event of the hidden main window. Whatever fails in one step is shown and
// leaves the others.
void DesktopProgram::load() {
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
    tellOfKeyboard();
    keyboard_.requestLeave();
    iconWatch_.begin();
    if (newSite_) events_.deliver([this] { settings_.offerAssistant(); });
}

// Who is about to be asked should know why, and what becomes of a refusal.
void DesktopProgram::tellOfKeyboard() {
    const std::string remark = keyboardRemark(keyboard_);
    if (remark != keyboardTold_ && !remark.empty()) notices_.notify(remark, LogLevel::kWarning);
    keyboardTold_ = remark;
}

void DesktopProgram::prepareUnderSplash() {
    const During splash([this, window = std::make_shared<SplashWindow>()](bool on) {
        window->setVisible(on);
        if (!on) foreground_->giveBack();
    });
    events_.DoEvents();
    newSite_ = !bindings_.files->fileExists(portSerieIni(bindings_.applicationFolder));
    prepareApplicationFolder(*bindings_.files, dialogs_, bindings_.applicationFolder,
                             bindings_.shippedData);
}

// A database that could not be opened has been complained of.
void DesktopProgram::copyDatabase() {
    if (!state_.database) return;
    try {
        keepDailyCopy(platform(), bindings_.applicationFolder);
    } catch (const RuntimeError& error) {
        notices_.notify(
            std::string("La copie du jour des scénarios n'a pas pu être faite : "_ansi) +
                error.description(),
            LogLevel::kWarning);
    }
}

}  // namespace kalvo
