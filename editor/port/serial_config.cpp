#include "editor/port/serial_config.h"

#include <string_view>

#include "core/reception/serial_reception.h"
#include "editor/port/port_choice.h"
#include "keys/key_files.h"
#include "platform/serial_port.h"
#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kParityLetters = "NEOMS";
constexpr std::string_view kUsualSpeed = "9600";

// The row of a number written with or without its sign position.
int rowOf(RowList list, std::string_view text) {
    list.select(trimBlanks(text));
    return list.selected;
}

bool choose(RowList& list, int row) {
    if (row < 0 || row >= list.count()) return false;
    list.selected = row;
    return true;
}

std::string stopBitsText(double stopBits) {
    return stopBits == 1.5 ? " 1.5" : withSignPosition(static_cast<std::int64_t>(stopBits));
}

}  // namespace

std::string SerialConfig::stored(std::string_view key) const {
    return readPortSerie(platform_.profiles, state_.scenario.applicationFolder, key);
}

void SerialConfig::ChargeCommunication() {
    fillLists();
    choice_ = {};
    if (!stored(port_serie::kPort).empty()) {
        choosePort(integerPart(stored(port_serie::kPort)) - 1);
        showSpeed(stored(port_serie::kSpeed));
        chooseDataBits(rowOf(CboDonnées, stored(port_serie::kDataBits)));
        choice_.protocol = stored(port_serie::kProtocol);
        chooseProtocol(rowOf(CboProtocol, choice_.protocol));
        const std::string parity = stored(port_serie::kParity);
        if (parity.size() == 1 && kParityLetters.find(parity) != std::string_view::npos)
            chooseParity(static_cast<int>(kParityLetters.find(parity)));
        chooseStopBits(rowOf(CboArret, stored(port_serie::kStopBits)));
        const std::string flow = stored(port_serie::kFlow);
        if (!flow.empty()) chooseFlow(integerPart(flow));
    }
    saved_ = choice_;
    if (unusableSpeed(stored(port_serie::kSpeed))) {
        // A terminal type that was written over it: the speed has to be chosen anew.
        chooseSpeed(rowOf(CboVitesse, kUsualSpeed));
        saved_.speed = 0;
    }
}

void SerialConfig::showSpeed(const std::string& speed) {
    chooseSpeed(rowOf(CboVitesse, speed));
    if (CboVitesse.selected >= 0 || unusableSpeed(speed)) return;
    unlistedSpeed = speed;
    choice_.speed = integerPart(speed);
}

void SerialConfig::fillLists() {
    CboPort = {portRows()};
    CboVitesse.clear();
    unlistedSpeed.clear();
    for (std::size_t key = 1; key <= kSpeeds; ++key)
        CboVitesse.rows.push_back(
            ReadIniValue(platform_.profiles, toucheIni(state_.scenario.applicationFolder),
                         kSpeedSection, withSignPosition(static_cast<std::int64_t>(key))));
    CboProtocol = {{"Optimus", "ScanPal", "HT630", "PT630"}};
    CboDonnées = {{"4", "5", "6", "7", "8"}};
    CboParité = {{"Aucune", "Paire", "Impaire", "Marque", "Espace"}};
    CboArret = {{"1", "1.5", "2"}};
    CboFlux = {{"Aucun", "Xon/Xoff", "RTS/CTS", "RTS & Xon"}};
}

void SerialConfig::choosePort(int row) {
    if (!choose(CboPort, row)) return;
    choice_.port = static_cast<std::int16_t>(row + 1);
    if (lineNeverSet()) chooseUsualLine();
}

// Applying settings of which nothing is chosen stores zeros.
bool SerialConfig::lineNeverSet() const {
    return stored(port_serie::kPort).empty() || (integerPart(stored(port_serie::kSpeed)) == 0 &&
                                                 integerPart(stored(port_serie::kDataBits)) == 0);
}

void SerialConfig::chooseUsualLine() {
    if (CboVitesse.selected < 0) chooseSpeed(rowOf(CboVitesse, kUsualSpeed));
    if (CboDonnées.selected < 0) chooseDataBits(rowOf(CboDonnées, "8"));
    if (CboParité.selected < 0) chooseParity(0);
    if (CboArret.selected < 0) chooseStopBits(0);
    if (CboFlux.selected < 0) chooseFlow(0);
}

void SerialConfig::chooseSpeed(int row) {
    if (choose(CboVitesse, row)) choice_.speed = integerPart(CboVitesse.at(row));
}

void SerialConfig::chooseProtocol(int row) {
    if (choose(CboProtocol, row)) choice_.protocol = CboProtocol.at(row);
}

void SerialConfig::chooseDataBits(int row) {
    if (choose(CboDonnées, row)) choice_.dataBits = toInteger16(CboDonnées.at(row));
}

void SerialConfig::chooseParity(int row) {
    if (choose(CboParité, row)) choice_.parity = kParityLetters.at(static_cast<std::size_t>(row));
}

void SerialConfig::chooseStopBits(int row) {
    if (choose(CboArret, row)) choice_.stopBits = leadingNumber(CboArret.at(row));
}

void SerialConfig::chooseFlow(int row) {
    if (choose(CboFlux, row)) choice_.flow = withSignPosition(row);
}

void SerialConfig::writeSettings(ProtocolKey protocolKey) {
    const auto write = [&](std::string_view key, std::string_view value) {
        WriteIniValue(platform_.profiles, port_serie::kSection, key, value,
                      portSerieIni(state_.scenario.applicationFolder));
    };
    write(port_serie::kPort, withSignPosition(choice_.port));
    write(port_serie::kDataBits, withSignPosition(choice_.dataBits));
    write(port_serie::kParity, choice_.parity);
    write(port_serie::kStopBits, stopBitsText(choice_.stopBits));
    write(port_serie::kSpeed, withSignPosition(choice_.speed));
    write(protocolKey == ProtocolKey::kOwn ? port_serie::kProtocol : port_serie::kSpeed,
          choice_.protocol);
    write(port_serie::kFlow, choice_.flow);
    storePortIdentity(platform_.profiles, state_.scenario.applicationFolder, platform_.port,
                      choice_.port);
}

void SerialConfig::saveProperties() {
    writeSettings(ProtocolKey::kOverSpeed);
    saved_ = {};
    closePort();
    openWithStoredSettings();
    saved_ = choice_;
}

void SerialConfig::saveAndReconnect() {
    writeSettings(ProtocolKey::kOwn);
    saved_ = choice_;
    if (!portActive(platform_.profiles, state_.scenario.applicationFolder)) return;
    closePort();
    platform_.port.setCommPort(integerPart(stored(port_serie::kPort)));
    openWithStoredSettings();
}

void SerialConfig::closePort() {
    if (platform_.port.PortOpen()) platform_.port.setPortOpen(false);
}

void SerialConfig::openWithStoredSettings() {
    const auto number = [&](std::string_view key) {
        return std::to_string(requiredIntegerPart(stored(key)));
    };
    const std::string speed = number(port_serie::kSpeed);
    const std::string dataBits = number(port_serie::kDataBits);
    const std::string parity = stored(port_serie::kParity);
    const std::string stopBits = number(port_serie::kStopBits);
    state_.TerminalType = stored(port_serie::kProtocol);
    sayUnknownFlow(platform_, state_.scenario.applicationFolder);
    configureLine(platform_.port, speed + "," + parity + "," + dataBits + "," + stopBits,
                  storedHandshaking(platform_.profiles, state_.scenario.applicationFolder));
    platform_.port.setPortOpen(true);
    logOpenPort(platform_, state_);
}

}  // namespace kalvo
