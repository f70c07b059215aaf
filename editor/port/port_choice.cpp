#include "editor/port/port_choice.h"

#include "settings/application_paths.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr int kPorts = 20;

}  // namespace

std::vector<std::string> portRows() {
    std::vector<std::string> rows;
    for (int port = 1; port <= kPorts; ++port) rows.push_back("COM" + withSignPosition(port));
    return rows;
}

RowList portsWithDevices(RowList ports, const std::vector<std::string>& devices) {
    for (std::size_t row = 0; row < ports.rows.size() && row < devices.size(); ++row)
        if (!devices[row].empty()) ports.rows[row] += " : " + devices[row];
    return ports;
}

bool portOffered(int row) { return row >= 0 && row < kPorts && (row + 1) % 10 != 0; }

void storePortChoice(ProfileFiles& profiles, std::string_view applicationFolder,
                     const SerialPort& serialPort, int row) {
    const int port = portOffered(row) ? row + 1 : 1;
    WriteIniValue(profiles, port_serie::kSection, port_serie::kPort, std::to_string(port),
                  portSerieIni(applicationFolder));
    storePortIdentity(profiles, applicationFolder, serialPort, port);
}

}  // namespace kalvo
