#include "core/start_up.h"

#include <string>

#include "core/error_text.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/log.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

void readSettings(const Platform& platform, RunTimeState& state) {
    state.RacInvent = readSetting(platform.registry, kRacInvent);
    state.RacCde = readSetting(platform.registry, kRacCde);
    state.scenario.DecimalSeparator = readSetting(platform.registry, kSepDec);
}

void compileChosenScenario(const Platform& platform, RunTimeState& state) {
    const std::string name = readSetting(platform.registry, kRacScenChx);
    if (name.empty()) return;
    const auto numero = findScenario(*state.database, name);
    if (!numero) return;
    const Compilation compilation =
        CompileScenario(platform, *state.database, state.scenario.applicationFolder, *numero);
    for (const std::string& warning : compilation.warnings)
        platform.log.write(LogLevel::kWarning, std::string(name).append(" : ").append(warning));
    if (!compilation.problem.empty())
        platform.dialogs.message(compilation.problem, kApplicationTitle, MessageIcon::kExclamation);
}

// Sets `portRefused` while the port is being opened: it stays set when that fails.
void openConfiguredPort(const Platform& platform, RunTimeState& state, SerialReception& reception,
                        const std::function<void()>& openSettings, bool& portRefused) {
    const std::string_view folder = state.scenario.applicationFolder;
    if (!portActive(platform.profiles, folder)) return;
    if (readPortSerie(platform.profiles, folder, port_serie::kPort).empty()) {
        platform.dialogs.message("Veuillez configurer les paramétres de communication."_ansi,
                                 kApplicationTitle, MessageIcon::kInformation);
        openSettings();
        return;
    }
    if (platform.port.PortOpen()) {
        platform.dialogs.message(
            "Le port de communication : " + std::to_string(platform.port.CommPort()) +
                std::string(" est déja ouvert"_ansi),
            kApplicationTitle, MessageIcon::kCritical);
    } else {
        portRefused = true;
        reception.configurePort();
        reception.openPort();
        portRefused = false;
    }
    std::string& name = state.scenario.active.ScenarioName;
    name = readSetting(platform.registry, kRacScenChx);
    if (name.empty()) name = "Aucun scénario choisi"_ansi;
}

void showError(const Platform& platform, const RuntimeError& error) {
    platform.dialogs.message(errorText(error) + "\r\n\r\nL'application va se fermer.",
                             kApplicationTitle, MessageIcon::kCritical);
}

}  // namespace

PortStart portRefusal(const RuntimeError& error) {
    switch (error.number()) {
        case error_number::kPortInvalid: return PortStart::kAway;
        case error_number::kPortAlreadyOpen: return PortStart::kBusy;
        case error_number::kPortSettings:
        case error_number::kTypeMismatch: return PortStart::kSettingsRefused;
        default: return PortStart::kFailed;
    }
}

PortStart startUp(const Platform& platform, RunTimeState& state, SerialReception& reception,
                  const std::function<void()>& openSettings, const std::function<void()>& prepare,
                  AwayPort away) {
    bool portRefused = false;
    PortStart port = PortStart::kDone;
    try {
        prepare();
        state.database =
            platform.databases.OpenDatabase(scenarioDatabase(state.scenario.applicationFolder));
        readSettings(platform, state);
        compileChosenScenario(platform, state);
        LoadActiveScenario(platform, state.scenario);
        state.scenario.keys.LoadKeyCorrespondence(platform.profiles,
                                                  state.scenario.applicationFolder);
        openConfiguredPort(platform, state, reception, openSettings, portRefused);
    } catch (const RuntimeError& error) {
        if (portRefused) port = portRefusal(error);
        if (port != PortStart::kAway || away == AwayPort::kError) showError(platform, error);
    }
    const std::string tip = trayTip(platform.port.CommPort(), state.scenario.active.ScenarioName);
    platform.icon.add(tip);
    platform.icon.modify(tip);
    return port;
}

}  // namespace kalvo
