#include "editor/port/serial_config.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "editor/port/port_choice.h"
#include "tests/editor/editor_site.h"
#include "tests/support/error_of.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using ::testing::IsEmpty;

struct SerialSettingsWindow : ::testing::Test, testing::EditorSite {
    void chooseEverything() { chooseSettings(2, 6, 4, 1, 1, 3, 2); }
    // The rows that are chosen in all lists.
    [[nodiscard]] std::string chosen() const {
        std::string rows;
        for (const RowList* list :
             {&serial.CboPort, &serial.CboVitesse, &serial.CboDonnées, &serial.CboParité,
              &serial.CboArret, &serial.CboFlux, &serial.CboProtocol})
            rows += std::to_string(list->selected) + " ";
        return rows;
    }
    // Not every system's function keeps the blank in front of a value; nobody reads it.
    [[nodiscard]] static std::string withoutBlanks(std::string_view bytes) {
        std::string text(bytes);
#ifdef _WIN32
        for (auto at = text.find("= "); at != std::string::npos; at = text.find("= "))
            text.erase(at + 1, 1);
#endif
        return text;
    }
    [[nodiscard]] std::string fileText() const {
        return withoutBlanks(testing::bytesOf(folder / "PortSerie.ini"));
    }
};

TEST_F(SerialSettingsWindow, ShowsTheListsAndWhatIsStored) {
    setPort(port_serie::kSpeed, " 9600");
    serial.ChargeCommunication();
    EXPECT_EQ(serial.CboPort.rows.front(), "COM 1");
    EXPECT_EQ(serial.CboPort.count(), 20);
    EXPECT_EQ(serial.CboVitesse.count(), 16);
    EXPECT_EQ(serial.CboVitesse.at(6), "9600");
    EXPECT_EQ(chosen(), "-1 -1 -1 -1 -1 -1 -1 ") << "nothing without a port";
    EXPECT_FALSE(serial.unsaved());

    setPorts({{port_serie::kSpeed, " 57600"},
              {port_serie::kDataBits, " 7"},
              {port_serie::kParity, "O"},
              {port_serie::kStopBits, " 1.5"},
              {port_serie::kFlow, " 2"},
              {port_serie::kProtocol, "Scanpal"}});
    for (const char* port : {" 3", "3"}) {
        setPort(port_serie::kPort, port);
        serial.ChargeCommunication();
        EXPECT_EQ(chosen(), "2 12 3 2 1 2 1 ") << port;
    }
    EXPECT_EQ(serial.CboVitesse.at(12), "57600");
    EXPECT_EQ(serial.CboProtocol.at(1), "ScanPal");
    setPorts({{port_serie::kParity, "?"}, {port_serie::kSpeed, "HT630"}});
    serial.ChargeCommunication();
    EXPECT_EQ(chosen(), "2 6 3 -1 1 2 1 ") << "a usual speed";
    EXPECT_TRUE(serial.unsaved()) << "until it is stored";
    setPort(port_serie::kSpeed, " 7200");
    serial.ChargeCommunication();
    EXPECT_EQ(chosen(), "2 -1 3 -1 1 2 1 ");
    EXPECT_EQ(serial.unlistedSpeed, "7200");
}

TEST_F(SerialSettingsWindow, ApplyWritesEveryKeyAndOpensThePortAgain) {
    serial.ChargeCommunication();
    chooseEverything();
    EXPECT_TRUE(serial.unsaved());
    EXPECT_EQ(fileText() + state.TerminalType, "") << "choosing changes nothing outside";
    serial.saveAndReconnect();
    EXPECT_EQ(portSetting(port_serie::kProtocol), "HT630");
    EXPECT_THAT(world.port.log, IsEmpty()) << "a port that is not used is left alone";

    setPort(port_serie::kPortActive, "1");
    world.port.open = true;
    world.port.identities = {{1, "another"}, {3, "/dev/serial/by-id/usb-reader"}};
    serial.saveAndReconnect();
    EXPECT_EQ(fileText(),
              withoutBlanks("[Port_série]\r\nPort= 3\r\n"
                            "Bit de donnée= 8\r\nBit de parité=E\r\nBit d'arrêt= 1.5\r\n"
                            "Vitesse= 9600\r\nProtocol=HT630\r\nFlux= 3\r\nPortActif=1\r\n"
                            "[Ports]\r\nCOM3=/dev/serial/by-id/usb-reader\r\n"_ansi));
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0", "CommPort=3", "Settings=9600,E,8,1",
                                            "SThreshold=1", "RThreshold=1", "Handshaking=3",
                                            "InputMode=0", "InputLen=1", "PortOpen=1"));
    EXPECT_EQ(state.TerminalType, "HT630");
    EXPECT_FALSE(serial.unsaved());
    world.port.identities[3] = "a stranger";
    const std::string before = fileText();
    serial.saveAndReconnect();
    EXPECT_EQ(fileText(), before) << "what the file says of a number stays";
}

// What a user sees who presses "Valider" of the properties with a terminal type
// chosen: the settings are stored, the type in place of the speed, and an error says
// that this is no speed.
TEST_F(SerialSettingsWindow, ValidatingThePropertiesPutsTheTerminalTypeOverTheSpeed) {
    setPort(port_serie::kProtocol, "PT630");
    serial.ChargeCommunication();
    chooseEverything();
    world.port.open = true;
    EXPECT_EQ(errorOf([&] { serial.saveProperties(); }), error_number::kTypeMismatch);
    EXPECT_EQ(fileText(),
              withoutBlanks("[Port_série]\r\nProtocol=PT630\r\nPort= 3\r\n"
                            "Bit de donnée= 8\r\nBit de parité=E\r\nBit d'arrêt= 1.5\r\n"
                            "Vitesse=HT630\r\nFlux= 3\r\n"_ansi));
    EXPECT_THAT(world.port.log, ElementsAre("PortOpen=0"));
}

TEST_F(SerialSettingsWindow, ValidatingThePropertiesKeepsThePortNumber) {
    setPorts({{port_serie::kPort, "1"}, {port_serie::kProtocol, "1200"}});
    serial.ChargeCommunication();
    chooseEverything();
    serial.ChargeCommunication();
    serial.choosePort(4);
    serial.chooseDataBits(3);
    serial.chooseParity(0);
    serial.chooseStopBits(2);
    serial.saveProperties();
    EXPECT_EQ(portSetting(port_serie::kPort), "5");
    EXPECT_THAT(world.port.log,
                ElementsAre("Settings=1200,N,7,2", "SThreshold=1", "RThreshold=1", "Handshaking=0",
                            "InputMode=0", "InputLen=1", "PortOpen=1"))
        << "a terminal type that is a number is a speed too";
    world.port.open = false;
    world.port.openError = error_number::kPortInvalid;
    EXPECT_EQ(errorOf([&] { serial.saveProperties(); }), error_number::kPortInvalid);
}

TEST_F(SerialSettingsWindow, TheChoiceOfAnotherPortIsStoredWithoutBlank) {
    struct Case {
        int row;
        const char* stored;
    };
    for (const auto& [row, stored] : {Case{0, "Port=1"}, Case{8, "Port=9"}, Case{10, "Port=11"},
                                      Case{9, "Port=1"}, Case{19, "Port=1"}, Case{-1, "Port=1"}}) {
        storePortChoice(profiles, folder.path(), world.port, row);
        EXPECT_EQ(fileText(), std::string("[Port_série]\r\n"_ansi) + stored + "\r\n") << row;
    }
}

}  // namespace
}  // namespace kalvo
