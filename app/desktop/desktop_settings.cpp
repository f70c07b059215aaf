#include "app/desktop/desktop_settings.h"

#include <QFileInfo>
#include <utility>

#include "app/portable_link.h"
#include "editor/access_lock.h"
#include "editor/first_site.h"
#include "editor/port/line_status.h"
#include "editor/windows/login_window.h"
#include "editor/windows/port_choice_window.h"
#include "platform/dialogs.h"
#include "platform/notify_icon.h"
#include "platform/qt/qt_text.h"
#include "platform/serial_port.h"
#include "scenario/tray_tip.h"
#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/number_text.h"
#include "transfer/portable_transfer_window.h"

namespace kalvo {

namespace {

std::string describe(const PortEntry& port) {
    // Only a path can name what is not plugged in.
    if (port.device.starts_with('/') && !QFileInfo::exists(toQString(port.device)))
        return port.device + " (absent)";
    if (port.description.empty()) return port.device;
    return port.device + " (" + port.description + ")";
}

bool anotherMayDo(PortStart port) { return port == PortStart::kAway || port == PortStart::kBusy; }

}  // namespace

DesktopSettings::DesktopSettings(const Platform& platform, RunTimeState& state,
                                 SerialReception& reception, QtEventPump& events,
                                 SystemBindings& bindings, std::function<bool()> targetReady)
    : platform_(platform),
      state_(state),
      reception_(reception),
      events_(events),
      bindings_(bindings),
      targetReady_(std::move(targetReady)),
      eraseWindow_([this](bool erase) {
          events_.deliver([&] { answerEraseQuestion(platform_, eraseQuestion_, erase); });
      }) {}

void DesktopSettings::ask() {
    if (lock_.accessLevel == 0 && LoginWindow(platform_, lock_).exec() != QDialog::Accepted) return;
    show();
}

void DesktopSettings::show() {
    if (!state_.database)
        state_.database =
            platform_.databases.OpenDatabase(scenarioDatabase(bindings_.applicationFolder));
    if (!window_) window_ = new SettingsWindow(platform_, state_, lock_, services());
    window_->showAccess();
    window_->show();
    window_->raise();
    window_->activateWindow();
}

SettingsServices DesktopSettings::services() {
    return {.deliver = [this](const auto& handler) { events_.deliver(handler); },
            .unlock = [this] { return LoginWindow(platform_, lock_).exec() == QDialog::Accepted; },
            .portDevices = [this] { return portDevices(); },
            .targetReady = targetReady_,
            .showAssistant = [this] { showAssistant(); },
            .showPortableTransfer = [this](QWidget* owner) { showPortableTransfer(owner); }};
}

bool DesktopSettings::close() {
    if (assistant_) assistant_->close();
    return !window_ || window_->close();
}

void DesktopSettings::end() {
    delete assistant_;
    delete window_;
}

void DesktopSettings::offerAssistant() {
    if (nothingSetUp(platform_, state_)) showAssistant();
}

void DesktopSettings::showAssistant() {
    events_.deliver([this] {
        if (!assistant_)
            assistant_ = new FirstSiteWindow(window_, platform_, state_, services(),
                                             [this](bool portOpen) { siteSetUp(portOpen); });
        assistant_->show();
        assistant_->raise();
        assistant_->activateWindow();
    });
}

// What the settings window shows is not what is stored any more.
void DesktopSettings::siteSetUp(bool portOpen) {
    if (window_) {
        window_->hide();
        window_->deleteLater();
        window_ = nullptr;
    }
    lock_ = {};
    if (!portOpen) offerWayOut(openPort());
    platform_.icon.notify(lineStatus(platform_, state_), LogLevel::kInformation);
}

void DesktopSettings::reopenPort() {
    if (platform_.port.PortOpen()) platform_.port.setPortOpen(false);
    const bool active = portActive(platform_.profiles, bindings_.applicationFolder);
    offerWayOut(active ? openPort() : PortStart::kDone);
    platform_.icon.modify(trayTip(platform_.port.CommPort(), state_.scenario.active.ScenarioName));
    platform_.icon.notify(lineStatus(platform_, state_), LogLevel::kInformation);
}

// Portables are on the first port: ours is closed for them and opened again.
void DesktopSettings::showPortableTransfer(QWidget* owner) {
    auto* const window = new PortableTransferWindow(
        owner, platform_,
        portableLink(*bindings_.files, *bindings_.profiles, bindings_.applicationFolder),
        bindings_.applicationFolder,
        [this](const std::function<void()>& handler) { events_.deliver(handler); });
    if (platform_.port.PortOpen() && platform_.port.CommPort() == 1) {
        platform_.port.setPortOpen(false);
        QObject::connect(window, &QObject::destroyed, &events_,
                         [this] { events_.deliver([this] { reception_.openPort(); }); });
    }
    window->show();
}

void DesktopSettings::offerWayOut(PortStart port) {
    switch (port) {
        case PortStart::kAway:
        case PortStart::kBusy: offerOtherPort(); break;
        case PortStart::kSettingsRefused: showRefusedLine(); break;
        case PortStart::kFailed:
        case PortStart::kDone: break;
    }
}

// Shows the error, if there is one.
PortStart DesktopSettings::openPort() {
    PortStart result = PortStart::kDone;
    events_.deliver([&] {
        try {
            reception_.configurePort();
            reception_.openPort();
        } catch (const RuntimeError& error) {
            result = portRefusal(error);
            throw;
        }
    });
    return result;
}

void DesktopSettings::offerOtherPort() {
    const std::string_view folder = bindings_.applicationFolder;
    SerialPort& port = platform_.port;
    int tried = integerPart(readPortSerie(platform_.profiles, folder, port_serie::kPort));
    PortStart result = PortStart::kAway;
    while (anotherMayDo(result)) {
        PortChoiceWindow choice(platform_.profiles, folder, port, portDevices(), tried);
        if (choice.exec() != QDialog::Accepted) break;
        result = openPort();
        tried = port.CommPort();
    }
    if (!anotherMayDo(result)) offerWayOut(result);
    platform_.icon.modify(trayTip(port.CommPort(), state_.scenario.active.ScenarioName));
}

void DesktopSettings::showRefusedLine() {
    const std::string speed =
        readPortSerie(platform_.profiles, bindings_.applicationFolder, port_serie::kSpeed);
    platform_.dialogs.message(
        unusableSpeed(speed) && trimBlanks(speed) != "0"
            ? std::string("La vitesse enregistrée n'est pas un nombre : "_ansi) + speed +
                  std::string(". Choisissez-la dans l'onglet Propriétés, puis enregistrez avec "
                              "« Valider » de l'onglet Connexion."_ansi)
            : std::string(
                  "Le port refuse les réglages enregistrés : corrigez-les dans l'onglet "
                  "Propriétés, puis enregistrez avec « Valider » de l'onglet Connexion."_ansi),
        kApplicationTitle, MessageIcon::kExclamation);
    show();
}

void DesktopSettings::askForErase() {
    eraseQuestion_.pending = 1;
    events_.post([this] {
        if (eraseQuestion_.pending != 0) eraseWindow_.show();
    });
}

// The device behind each port number, empty where there is none.
std::vector<std::string> DesktopSettings::portDevices() {
    std::vector<std::string> devices;
    for (const PortEntry& port : listSerialPorts(platform_.profiles, bindings_.applicationFolder)) {
        if (port.number < 1) continue;
        const auto index = static_cast<std::size_t>(port.number - 1);
        if (devices.size() <= index) devices.resize(index + 1);
        devices[index] = describe(port);
    }
    return devices;
}

}  // namespace kalvo
