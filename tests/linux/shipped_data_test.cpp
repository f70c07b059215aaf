// The key files that come with the program, read as the program reads them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/settings/linux_profile_files.h"
#include "platform/program_folders.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Not;

// In the tree this was built from.
std::string shippedData() { return programFolders().shipped.back().string(); }

std::string valueOf(const char* file, const char* section, int key) {
    // A leading blank, as the program asks for them.
    return LinuxProfileFiles().read(shippedData() + "\\" + file, section,
                                    " " + std::to_string(key));
}

std::vector<std::string> valuesOf(const char* file, const char* section, int first, int last) {
    std::vector<std::string> values;
    for (int key = first; key <= last; ++key) values.push_back(valueOf(file, section, key));
    return values;
}

std::vector<std::string> keyEntries() {
    auto entries = valuesOf("Touche.ini", "Particuliere", 0, 14);
    for (auto& entry : valuesOf("Touche.ini", "systeme", 0, 22)) entries.push_back(entry);
    return entries;
}

// A script of one key: prefixes, then a lower-case letter or a name of the language.
bool isOneKey(const std::string& script) {
    static const std::regex kOneKey(
        R"([+^%]*([a-z]|\{(BACKSPACE|DELETE|DOWN|END|ENTER|ESC|HOME|LEFT|PGDN|PGUP|RIGHT|TAB|UP|)"
        R"(F[1-9]|F1[0-2])\}))");
    return std::regex_match(script, kOneKey);
}

TEST(ShippedKeys, HaveUniqueLabelsInBracesAndAScriptEach) {
    std::set<std::string> labels;
    std::set<std::string> scripts;
    for (const std::string& entry : keyEntries()) {
        const std::size_t at = entry.find('@');
        ASSERT_NE(at, std::string::npos) << entry;
        const std::string label = entry.substr(0, at);
        EXPECT_TRUE(label.size() > 2 && label.front() == '{' && label.back() == '}') << label;
        EXPECT_EQ(label.find_first_of("{}'@&^", 1), label.size() - 1) << label;
        EXPECT_TRUE(labels.insert(label).second) << label << " twice";
        const std::string script =
            valueOf("Corres.ini", "Correspondance", std::stoi(entry.substr(at + 1)));
        EXPECT_TRUE(isOneKey(script)) << label << " types " << script;
        EXPECT_TRUE(scripts.insert(script).second) << label << " types what another types";
    }
    EXPECT_EQ(labels.size(), 38U);
    EXPECT_EQ(valueOf("Touche.ini", "Particuliere", 15), "");
    EXPECT_EQ(valueOf("Touche.ini", "systeme", 23), "");
}

TEST(ShippedKeys, ListTheSpeedsOfTheLine) {
    EXPECT_THAT(valuesOf("Touche.ini", "Vitesses", 1, 17),
                ElementsAre("110", "300", "600", "1200", "2400", "4800", "9600", "14400", "19200",
                            "28800", "38400", "56000", "57600", "115200", "128000", "256000", ""));
}

TEST(ShippedFileTexts, CanStandInALine) {
    const auto texts = valuesOf("TouFic.ini", "Touches", 0, 32);
    EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), texts.size());
    EXPECT_THAT(texts, Each(Not("")));
    EXPECT_THAT(texts, Contains(" "));
    EXPECT_THAT(texts, Contains("\""));
    EXPECT_THAT(texts, Contains("Entrée"_ansi));
    EXPECT_EQ(valueOf("TouFic.ini", "Touches", 33), "");
    const auto keys = keyEntries();
    for (const std::string& text : texts) {
        EXPECT_EQ(text.find_first_of("@'"), std::string::npos) << text;
        EXPECT_EQ(text.find_first_of("&^"), std::string::npos) << text << " would be a marker";
        for (const std::string& key : keys)
            EXPECT_FALSE(key.starts_with("{" + text + "}")) << text << " would be a key";
    }
}

TEST(ShippedFiles, AreCodePage1252WithCrLf) {
    for (const char* name : {"/Touche.ini", "/Corres.ini", "/TouFic.ini"}) {
        const std::string bytes = testing::bytesOf(shippedData() + name);
        EXPECT_TRUE(bytes.ends_with("\r\n")) << name;
        EXPECT_FALSE(std::regex_search(bytes, std::regex("[^\r]\n"))) << name;
        EXPECT_EQ(bytes.find("\xC3"), std::string::npos) << name << " looks like UTF-8";
    }
}

}  // namespace
}  // namespace kalvo
