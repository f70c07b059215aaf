#include "tray/tray_menu.h"

#include <string>
#include <utility>

#include "platform/dialogs.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_loader.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

// A value left by installations that lock the settings with a password of their own.
constexpr std::string_view kPasswordValue = "MDPUTL";

constexpr std::string_view kReplaySeparator = ";";

}  // namespace

TrayMenu::TrayMenu(const Platform& platform, RunTimeState& state, SerialReception& reception,
                   Windows windows)
    : platform_(platform), state_(state), reception_(reception), windows_(std::move(windows)) {}

bool TrayMenu::useful(MenuEntry entry) const {
    return entry != MenuEntry::kTransfer || !pushesBatches(state_.TerminalType);
}

void TrayMenu::choose(MenuEntry entry) {
    switch (entry) {
        case MenuEntry::kSettings: showSettings(); break;
        case MenuEntry::kAbout: windows_.showAbout(); break;
        case MenuEntry::kTransfer: reception_.transfer(); break;
        case MenuEntry::kOrder: activateOrderScenario(); break;
        case MenuEntry::kQuit: quit(); break;
        case MenuEntry::kReplay: replay(); break;
    }
}

void TrayMenu::showSettings() {
    if (readSetting(platform_.registry, kPasswordValue).empty())
        windows_.showSettings();
    else
        platform_.dialogs.message("Problème de mot de passe"_ansi, kApplicationTitle,
                                  MessageIcon::kNone);
}

void TrayMenu::activateOrderScenario() {
    const std::string name = readSetting(platform_.registry, kRacCde);
    if (name.empty()) {
        say("Aucun scénario n'est défini pour la commande"_ansi);
        return;
    }
    writeSetting(platform_.registry, kRacScenChx, name);
    LoadActiveScenario(platform_, state_.scenario);
    say("Scénario de commande actif !"_ansi);
}

// At once, in a transfer too: what the scanner was told is accepted is in the journal.
void TrayMenu::quit() {
    resumeNext([&] {
        if (platform_.port.PortOpen()) platform_.port.setPortOpen(false);
    });
    platform_.icon.remove();
    windows_.endProgram();
}

void TrayMenu::replay() {
    const std::string file = readPortSerie(platform_.profiles, state_.scenario.applicationFolder,
                                           port_serie::kReplayFile);
    if (file.empty())
        windows_.showReplay();
    else
        windows_.replayTurn(
            [&] { return ReplayFile(platform_, state_.scenario, file, kReplaySeparator); });
}

void TrayMenu::say(std::string_view text) {
    platform_.dialogs.message(text, kApplicationTitle, MessageIcon::kInformation);
}

}  // namespace kalvo
