// The text the tray icon shows: which port, which scenario.
#pragma once

#include <string>
#include <string_view>

#include "platform/notify_icon.h"
#include "text/ansi_text.h"

namespace kalvo {

// Without a scenario the tip says so. Exactly kTipLength characters: cut or padded with blanks.
[[nodiscard]] inline std::string trayTip(int portNumber, std::string_view scenarioName) {
    std::string tip = "Kalvo COM " + std::to_string(portNumber);
    tip += " : Ouvert, Scénario : "_ansi;
    tip += scenarioName.empty() ? "Aucun scénario choisi"_ansi : scenarioName;
    tip.resize(kTipLength, ' ');
    return tip;
}

}  // namespace kalvo
