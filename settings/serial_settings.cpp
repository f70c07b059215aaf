#include "settings/serial_settings.h"

#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/number_text.h"

namespace kalvo {

std::string readPortSerie(ProfileFiles& profiles, std::string_view applicationFolder,
                          std::string_view key) {
    return ReadIniValue(profiles, portSerieIni(applicationFolder), port_serie::kSection, key);
}

void storePortIdentity(ProfileFiles& profiles, std::string_view applicationFolder,
                       const SerialPort& port, int number) {
    const std::string file = portSerieIni(applicationFolder);
    const std::string key = "COM" + std::to_string(number);
    const std::string identity = port.identity(number);
    if (identity.empty() || !ReadIniValue(profiles, file, kPortsSection, key).empty()) return;
    WriteIniValue(profiles, kPortsSection, key, identity, file);
}

bool portActive(ProfileFiles& profiles, std::string_view applicationFolder) {
    return integerPart(readPortSerie(profiles, applicationFolder, port_serie::kPortActive)) != 0;
}

bool unusableSpeed(std::string_view speed) { return !speed.empty() && integerPart(speed) <= 0; }

std::string unknownFlow(ProfileFiles& profiles, std::string_view applicationFolder) {
    const std::string flow = readPortSerie(profiles, applicationFolder, port_serie::kFlow);
    const std::string_view mode = trimBlanks(flow);
    const bool known = mode.empty() || (mode.size() == 1 && mode >= "0" && mode <= "3");
    return known ? std::string() : flow;
}

std::string lineSettings(ProfileFiles& profiles, std::string_view applicationFolder) {
    const auto text = [&](std::string_view key) {
        return readPortSerie(profiles, applicationFolder, key);
    };
    const auto number = [&](std::string_view key) {
        return std::to_string(integerPart(text(key)));
    };
    return number(port_serie::kSpeed) + "," + text(port_serie::kParity) + "," +
           number(port_serie::kDataBits) + "," + number(port_serie::kStopBits);
}

Handshaking storedHandshaking(ProfileFiles& profiles, std::string_view applicationFolder) {
    const std::int32_t mode =
        integerPart(readPortSerie(profiles, applicationFolder, port_serie::kFlow));
    return mode >= 0 && mode <= 3 ? static_cast<Handshaking>(mode) : Handshaking::kNone;
}

void configureLine(SerialPort& port, std::string_view settings, Handshaking handshaking) {
    port.setSettings(settings);
    port.setSThreshold(1);
    port.setRThreshold(1);
    port.setHandshaking(handshaking);
    port.setInputMode(0);
    port.setInputLen(1);
}

}  // namespace kalvo
