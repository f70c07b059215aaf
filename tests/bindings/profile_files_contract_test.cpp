// What the INI files of every system have to do.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo::testing {
namespace {

// One file with everything people and programs leave in such files.
constexpr std::string_view kAwkward =
    "hors = section\r\n"
    "; [Port] in a comment\r\n"
    "[ Port_série ]text behind the bracket\r\n"
    "Port = 3 \r\n"
    "\t Vitesse\t=\t 9600\r\n"
    "Bit d'arrêt= 1.5\n"
    "port=7\r\n"
    "quotes=\" a b \"\r\n"
    "single=' a '\r\n"
    "nested=\"'x'\"\r\n"
    "partly=a=\"b\"\r\n"
    "open=\"abc\r\n"
    "lone=\"\r\n"
    "comment=v ; c\r\n"
    ";hidden=1\r\n"
    "no equals sign\r\n"
    "empty=\r\n"
    "blank=   \r\n"
    "=unnamed\r\n"
    "equals==x=\r\n"
    "[Other]\r\n"
    "Port=5\r\n"
    "[PORT_SéRIE]\r\n"
    "late=1\r\n"
    "[Last]\r\n"
    "end=no newline"_ansi;

struct ProfileFilesContract : ::testing::Test {
    TemporaryFolder folder_;
    SystemProfiles profiles_;
};

struct ProfileCase {
    std::string_view section, key, expected;
};

constexpr std::string_view kPort = "Port_série"_ansi;
constexpr std::array kWhatItHolds{ProfileCase{kPort, "Port", "3"},
                                  ProfileCase{kPort, "Vitesse", "9600"},
                                  ProfileCase{kPort, "VITESSE", "9600"},
                                  ProfileCase{" Port_série "_ansi, " Port ", "3"},
                                  ProfileCase{"PORT_SéRIE"_ansi, "BIT D'ARRêT"_ansi, "1.5"},
                                  ProfileCase{kPort, "quotes", " a b "},
                                  ProfileCase{kPort, "single", " a "},
                                  ProfileCase{kPort, "nested", "'x'"},
                                  ProfileCase{kPort, "partly", "a=\"b\""},
                                  ProfileCase{kPort, "open", "\"abc"},
                                  ProfileCase{kPort, "lone", "\""},
                                  ProfileCase{kPort, "comment", "v ; c"},
                                  ProfileCase{kPort, "hidden", ""},
                                  ProfileCase{kPort, "no equals sign", ""},
                                  ProfileCase{kPort, "empty", ""},
                                  ProfileCase{kPort, "blank", ""},
                                  ProfileCase{kPort, "equals", "=x="},
                                  ProfileCase{kPort, "missing", ""},
                                  ProfileCase{kPort, "late", ""},
                                  ProfileCase{"Other", "Port", "5"},
                                  ProfileCase{"Last", "end", "no newline"},
                                  ProfileCase{"Port", "Port", ""},
                                  ProfileCase{"Nowhere", "x", ""}};

TEST_F(ProfileFilesContract, ReadsAwkwardFiles) {
    const std::string file = folder_ / "awkward.ini";
    writeBytes(file, std::string(kAwkward));
    for (const auto& [section, key, expected] : kWhatItHolds)
        EXPECT_EQ(profiles_.read(file, section, key), expected) << section << "/" << key;
    EXPECT_EQ(profiles_.read(folder_ / "missing.ini", "s", "k"), "");
    EXPECT_EQ(profiles_.read(folder_.path(), "s", "k"), "") << "a folder";
    EXPECT_EQ(bytesOf(file), kAwkward) << "reading changes nothing";
}

TEST_F(ProfileFilesContract, CutsLongValues) {
    const std::string file = folder_ / "long.ini";
    writeBytes(file, "[s]\r\nexact=" + std::string(2054, 'x') + "\r\nlonger=\"" +
                         std::string(2055, 'y') + "\"\r\n");
    EXPECT_EQ(profiles_.read(file, "s", "exact"), std::string(2054, 'x'));
    EXPECT_EQ(profiles_.read(file, "s", "longer"), std::string(2054, 'y'));
}

TEST_F(ProfileFilesContract, CreatesFileAndSectionOnWrite) {
    const std::string file = folder_ / "new.ini";
    EXPECT_TRUE(profiles_.write(file, " Port_série "_ansi, " Vitesse ", "9600"));
    EXPECT_TRUE(profiles_.write(file, "Autre", "Vide", ""));
    EXPECT_TRUE(profiles_.write(file, "port_SéRIE"_ansi, "Port", "3"));
    EXPECT_EQ(bytesOf(file), "[Port_série]\r\nVitesse=9600\r\nPort=3\r\n[Autre]\r\nVide=\r\n"_ansi);
    EXPECT_FALSE(profiles_.write(folder_ / "no/such/folder.ini", "s", "k", "v"));
    EXPECT_FALSE(profiles_.write(folder_.path(), "s", "k", "v")) << "a folder";
}

TEST_F(ProfileFilesContract, WritesTheFirstMatchAndLeavesTheRest) {
    const std::string file = folder_ / "written.ini";
    writeBytes(file, std::string(kAwkward));
    EXPECT_TRUE(profiles_.write(file, "Port_série"_ansi, "PORT", "12"));
    EXPECT_TRUE(profiles_.write(file, "Port_série"_ansi, "PortActif", " 1"));
    for (const auto& [section, key, expected] : kWhatItHolds) {
        const bool written = section.find("Port_") != std::string_view::npos &&
                             key.find("Port") != std::string_view::npos;
        EXPECT_EQ(profiles_.read(file, section, key), written ? "12" : expected) << key;
    }
    EXPECT_EQ(profiles_.read(file, "Port_série"_ansi, "PortActif"), "1");
    const std::string bytes = bytesOf(file);
    for (const char* kept :
         {"; [Port] in a comment\r\n", "\r\n;hidden=1\r\n", "\r\nno equals sign\r\n",
          "\r\nquotes=\" a b \"\r\n", "\r\nend=no newline\r\n"})
        EXPECT_NE(bytes.find(kept), std::string::npos) << kept;
    EXPECT_LT(bytes.find("PortActif="), bytes.find("[Other]"));
}

TEST_F(ProfileFilesContract, ListsSectionsAndRemovesTheFirstOfAName) {
    const std::string file = folder_ / "removed.ini";
    EXPECT_TRUE(profiles_.sections(file).empty());
    std::string content(kAwkward);
    content.insert(content.find("[Other]"), "; on the next\r\n");
    writeBytes(file, content);
    using Names = std::vector<std::string>;
    EXPECT_EQ(profiles_.sections(file),
              (Names{std::string(kPort), "Other", std::string("PORT_SéRIE"_ansi), "Last"}));
    EXPECT_TRUE(profiles_.removeSection(file, "port_SéRIE"_ansi));
    EXPECT_TRUE(profiles_.removeSection(file, "Nowhere"));
    EXPECT_EQ(profiles_.sections(file), (Names{"Other", std::string("PORT_SéRIE"_ansi), "Last"}));
    EXPECT_EQ(profiles_.read(file, kPort, "Port"), "");
    EXPECT_EQ(profiles_.read(file, kPort, "late"), "1");
    EXPECT_EQ(profiles_.read(file, "Other", "Port"), "5");
    EXPECT_NE(bytesOf(file).find("\n; on the next\r\n[Other]"), std::string::npos);
    EXPECT_FALSE(profiles_.removeSection(folder_.path(), "s")) << "a folder";
}

TEST_F(ProfileFilesContract, EveryCharacterComesBack) {
    const std::string file = folder_ / "bytes.ini";
    std::string value;
    for (int byte = 0x21; byte < 0x100; ++byte) value.push_back(static_cast<char>(byte));
    EXPECT_TRUE(profiles_.write(file, "s", "k", value));
    EXPECT_EQ(profiles_.read(file, "s", "k"), value);
    EXPECT_TRUE(profiles_.write(file, "s", "k", std::string("cut\0here", 8)));
    EXPECT_EQ(profiles_.read(file, "s", "k"), "cut");
}

}  // namespace

}  // namespace kalvo::testing
