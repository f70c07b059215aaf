#include "editor/port/line_status.h"

#include "platform/serial_port.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

std::string lineStatus(const Platform& platform, const RunTimeState& state) {
    const SerialPort& port = platform.port;
    const std::string_view folder = state.scenario.applicationFolder;
    std::string status = "COM " + std::to_string(port.CommPort());
    if (port.PortOpen())
        status.append(" ouvert à "_ansi)
            .append(trimBlanks(readPortSerie(platform.profiles, folder, port_serie::kSpeed)));
    else if (portActive(platform.profiles, folder))
        status += " fermé"_ansi;
    else
        status += " : port non utilisé (PortActif=0)"_ansi;
    const std::string& scenario = state.scenario.active.ScenarioName;
    status += scenario.empty() ? ", aucun scénario choisi"_ansi : ", scénario "_ansi;
    return status + scenario;
}

}  // namespace kalvo
