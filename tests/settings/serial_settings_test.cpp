#include "settings/serial_settings.h"

#include <gtest/gtest.h>

#include "settings/application_paths.h"
#include "tests/support/fake_profile_files.h"

namespace kalvo {
namespace {

class SerialSettings : public ::testing::Test {
protected:
    testing::FakeProfileFiles files;
    void set(std::string_view key, std::string_view value) {
        files.write(portSerieIni("/app"), "Port_série"_ansi, key, value);
    }
    void line(const char* speed, const char* parity, const char* data, const char* stop) {
        set("Vitesse", speed);
        set("Bit de parité"_ansi, parity);
        set("Bit de donnée"_ansi, data);
        set("Bit d'arrêt"_ansi, stop);
    }
};

TEST_F(SerialSettings, TheLineSettingsAreIntegerPartsJoinedByCommas) {
    EXPECT_EQ(lineSettings(files, "/app"), "0,,0,0") << "nothing configured";
    line(" 9600", "N", " 8", " 1");
    EXPECT_EQ(lineSettings(files, "/app"), "9600,N,8,1");
    line("256000", "e", "7", " 1.5");
    EXPECT_EQ(lineSettings(files, "/app"), "256000,e,7,1");
    line("HT630", "N", "8", "2");
    EXPECT_EQ(lineSettings(files, "/app"), "0,N,8,2");
}

TEST_F(SerialSettings, ThePortIsActiveForAnyOtherNumberThanZero) {
    EXPECT_FALSE(portActive(files, "/app"));
    for (const auto& [value, active] :
         {std::pair{"0", false}, {" 1", true}, {"-1", true}, {"oui", false}}) {
        set("PortActif", value);
        EXPECT_EQ(portActive(files, "/app"), active) << value;
    }
}

TEST_F(SerialSettings, UnknownFlowControlIsNone) {
    set("Flux", " 2");
    EXPECT_EQ(storedHandshaking(files, "/app"), Handshaking::kRtsCts);
    set("Flux", "4");
    EXPECT_EQ(storedHandshaking(files, "/app"), Handshaking::kNone);
}

}  // namespace
}  // namespace kalvo
