// The port and line settings of the settings window, and their way into
// PortSerie.ini and onto the port.
#pragma once

#include <cstdint>
#include <string>

#include "core/run_time_state.h"
#include "editor/row_list.h"
#include "platform/platform.h"

namespace kalvo {

class SerialConfig {
public:
    RowList CboPort, CboVitesse, CboProtocol, CboDonnées, CboParité, CboArret, CboFlux;
    // The stored speed when it is none of the rows; the list shows it all the same.
    std::string unlistedSpeed;

    SerialConfig(const Platform& platform, RunTimeState& state)
        : platform_(platform), state_(state) {}

    // Fills the lists and shows the stored settings, if a port is stored.
    void ChargeCommunication();

    // The lists' click events. Nothing outside the window changes.
    void choosePort(int row);
    void chooseSpeed(int row);
    void chooseProtocol(int row);
    void chooseDataBits(int row);
    void chooseParity(int row);
    void chooseStopBits(int row);
    void chooseFlow(int row);

    // Whether something was chosen that is not in the file yet.
    [[nodiscard]] bool unsaved() const { return choice_ != saved_; }

    // "Valider" of the properties: the terminal type ends up in `Vitesse`, over
    // the speed, and `Protocol` stays as it was. Sites rely on the order of the
    // writes; the choice counts as unsaved until "Connexion" has applied it, unless the
    // port opens with what was written. The port is closed and opened again with what the file now
    // says, its number aside. RuntimeError 13 when a number in the file is none; those of the port.
    void saveProperties();

    // The apply of the tab "Connexion": the terminal type goes to its own key;
    // the port is opened again, under the stored number, if the program uses it.
    void saveAndReconnect();

private:
    // What most terminals are set to, for a site that has nothing stored yet.
    void chooseUsualLine();
    [[nodiscard]] bool lineNeverSet() const;

    // What the window keeps while the user works.
    struct Choice {
        std::int16_t port = 0;
        std::int32_t speed = 0;
        std::int16_t dataBits = 0;
        std::string parity;
        double stopBits = 0;
        std::string flow;
        std::string protocol;

        friend bool operator==(const Choice&, const Choice&) = default;
    };
    enum class ProtocolKey { kOverSpeed, kOwn };

    void fillLists();
    void showSpeed(const std::string& speed);
    void writeSettings(ProtocolKey protocolKey);
    void closePort();
    void openWithStoredSettings();
    [[nodiscard]] std::string stored(std::string_view key) const;

    Platform platform_;
    RunTimeState& state_;
    Choice choice_;
    Choice saved_;
};

}  // namespace kalvo
