#include "platform/linux/settings/reg_file_text.h"

#include <gtest/gtest.h>

#include <string>

#include "text/ansi_text.h"
#include "text/file_text.h"

namespace kalvo {
namespace {

constexpr std::string_view kKey = "Software\\Ketvan\\Lumo";

// A key as a site would export it, with its neighbours.
const std::string kExport =
    "Windows Registry Editor Version 5.00\r\n"
    "\r\n"
    "[HKEY_CURRENT_USER\\Software\\Ketvan]\r\n"
    "\"RacCde\"=\"elsewhere\"\r\n"
    "\r\n"
    "[HKEY_CURRENT_USER\\Software\\Ketvan\\Lumo]\r\n"
    "@=\"défaut\"\r\n"
    "\"RacScenChx\"=\"Entrée \\\"stock\\\" C:\\\\x €\"\r\n"
    "\"Taille\"=dword:0000012c\r\n"
    "\"Position\"=hex:01,02,\\\r\n"
    "  ff\r\n"
    "\"Dossier\"=hex(2):e9,00,41,00,00,00\r\n"
    "\"Lignes\"=\"a\r\n"
    "b\"\r\n"
    "; \"SepDec\"=\"comment\"\r\n"
    "\"Absent\"=-\r\n"
    "\"Étranger 漢\"=\"字😀\"\r\n"
    "\r\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Ketvan\\Lumo]\r\n"
    "\"SepDec\"=\"machine\"\r\n";

std::string shown(const std::optional<RegistryValue>& value) {
    return value ? std::to_string(value->type) + ":" + value->data : "missing";
}

std::string utf16(std::string_view utf8) { return "\xFF\xFE" + utf8ToUtf16Le(utf8); }

TEST(RegFile, ReadsAnExportInEveryEncoding) {
    struct Case {
        std::string_view name, expected;
    };
    for (const std::string& content : {utf16(kExport), kExport, "\xEF\xBB\xBF" + kExport})
        for (const auto& [name, expected] :
             {Case{"", "1:défaut"_ansi}, Case{"RACSCENCHX", "1:Entrée \"stock\" C:\\x €"_ansi},
              Case{"Taille", std::string_view("4:\x2C\x01\0\0", 6)},
              Case{"Position", "3:\x01\x02\xFF"},
              Case{"Dossier", std::string_view("2:\xE9"
                                               "A\0",
                                               5)},
              Case{"Lignes", "1:a\r\nb"}, Case{"RacCde", "missing"}, Case{"SepDec", "missing"},
              Case{"Absent", "missing"}})
            EXPECT_EQ(shown(findRegistryValue(content, kKey, name)), expected);
}

TEST(RegFile, WithoutAMarkTheHeaderTellsTheEncoding) {
    const std::string_view lines = "\r\n[HKEY_CURRENT_USER\\K]\r\n\"n\"=\"Ã©\"\r\n"_ansi;
    const auto read = [&](const std::string& header) {
        return shown(findRegistryValue(header + std::string(lines), "K", "n"));
    };
    EXPECT_EQ(read("REGEDIT4"), "1:Ã©"_ansi);
    EXPECT_EQ(read("Windows Registry Editor Version 5.00"), "1:é"_ansi);
    EXPECT_EQ(read(std::string("Windows Registry Editor Version 5.00\r\n;é"_ansi)), "1:Ã©"_ansi)
        << "not UTF-8 after all";
    EXPECT_EQ(shown(findRegistryValue("REGEDIT4\n[HKEY_CURRENT_USER\\K]\n\"n\"=hex(1):e9,00\n", "K",
                                      "n")),
              std::string("1:\xE9\0", 4))
        << "bytes of this version are no UTF-16";
}

TEST(RegFile, AWriteKeepsEverythingElse) {
    std::string expected = kExport;
    const std::string old = "\"RacScenChx\"=\"Entrée \\\"stock\\\" C:\\\\x €\"";
    expected.replace(expected.find(old), old.size(), "\"racscenchx\"=\"Œuf\"");
    expected.insert(expected.find("\r\n[HKEY_LOCAL"), "\"SepDec\"=\",\"\r\n");
    for (const auto& encoded : {+[](const std::string& text) { return utf16(text); },
                                +[](const std::string& text) { return text; }}) {
        auto content = withRegistryValue(encoded(kExport), kKey, "racscenchx",
                                         {kRegSz,
                                          "\x8C"
                                          "uf"});
        content = withRegistryValue(*content, kKey, "SepDec", {kRegSz, ","});
        EXPECT_EQ(*content, encoded(expected));
    }
}

TEST(RegFile, NewFilesAndKeysAreImportable) {
    auto content = withRegistryValue("", kKey, "RacCde", {kRegSz, std::string("Entrée"_ansi)});
    EXPECT_EQ(
        *content,
        "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Ketvan\\Lumo]\r\n\"RacCde\"=\"Entrée\"\r\n"_ansi);
    content = withRegistryValue(*content, "Autre\\", "", {kRegDword, std::string("\1\0\0\0", 4)});
    EXPECT_TRUE(content->ends_with("\r\n\r\n[HKEY_CURRENT_USER\\Autre]\r\n@=dword:00000001\r\n"));
    EXPECT_FALSE(withRegistryValue(*content, "a\nb", "n", {}).has_value());
    EXPECT_FALSE(withRegistryValue(*content, "a", "n\r", {}).has_value());
}

TEST(RegFile, TheLastStatementCounts) {
    const std::string head = "REGEDIT4\n[HKEY_CURRENT_USER\\K\\L]\n\"n\"=\"1\"\n";
    struct Case {
        std::string more;
        const char* expected;
    };
    for (const auto& [more, expected] : {Case{"\"N\"=\"2\"\n", "1:2"}, Case{"\"n\"=-\n", "missing"},
                                         Case{"[-HKEY_CURRENT_USER\\k]\n", "missing"},
                                         Case{"[-HKEY_CURRENT_USER\\K\\Lx]\n", "1:1"},
                                         Case{"[HKEY_CURRENT_USER\\k\\l]\n\"n\"=\"3\"\n", "1:3"}}) {
        EXPECT_EQ(shown(findRegistryValue(head + more, "K\\L", "n")), expected) << more;
        const auto written = withRegistryValue(head + more, "K\\L", "n", {kRegSz, "new"});
        EXPECT_EQ(shown(findRegistryValue(*written, "K\\L", "n")), "1:new") << more;
    }
}

TEST(RegFile, DamagedLinesAreSkipped) {
    const std::string tail = "\"good\"=\"yes\"\n";
    for (const char* damage :
         {"\"good\"=\"open\n", "\"good\"=dword:xyz\n", "\"good\"=hex:0g\n", "\"good\"=hex(:00\n",
          "\"good\n", "\"good\"\n", "\"good\"=\n", "=\"x\"\n", "[\n", "\"bad\"=\"ends with \\\"\n",
          "\"bad\"=hex:01,\\\n", "\"bad\"=\"text\"behind\n", "garbage \xFF\xC3\n", "\"\n", "@\n"}) {
        const std::string content = std::string("[HKEY_CURRENT_USER\\K]\n") + damage + tail;
        EXPECT_EQ(shown(findRegistryValue(content, "K", "good")), "1:yes") << damage;
        EXPECT_EQ(shown(findRegistryValue(content, "K", "bad")), "missing") << damage;
        const auto written = withRegistryValue(content, "K", "new", {kRegSz, "v"});
        EXPECT_EQ(*written, content + "\"new\"=\"v\"\r\n") << damage;
    }
}

}  // namespace
}  // namespace kalvo
