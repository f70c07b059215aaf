// What the registry of every system has to do.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo::testing {
namespace {

constexpr auto kUser = RegistryRoot::kCurrentUser;
constexpr std::string_view kKey = "Software\\KalvoTests\\Registre";

struct RegistryContract : ::testing::Test {
    TemporaryFolder folder_;
#ifdef _WIN32
    SystemRegistry registry_;
#else
    SystemRegistry registry_{folder_ / "conf/a/registre.reg"};
#endif
};

// The text of a value as its readers take it: up to the first NUL.
std::string textOf(const std::optional<RegistryValue>& value) {
    if (!value) return "(missing)";
    if (value->type != kRegSz) return "(type " + std::to_string(value->type) + ")";
    return value->data.substr(0, value->data.find('\0'));
}

TEST_F(RegistryContract, WhatWasNeverSetIsMissing) {
    EXPECT_FALSE(registry_.query(kUser, "Software\\KalvoTests\\Jamais", "x").has_value());
    EXPECT_TRUE(registry_.set(kUser, kKey, "other", {kRegSz, "1"}));
    EXPECT_FALSE(registry_.query(kUser, kKey, "x").has_value());
}

TEST_F(RegistryContract, TextsComeBackAsTheyWereSet) {
    for (const std::string_view text :
         {""_ansi, "."_ansi, " Entrée € œ "_ansi, "C:\\out\\\"x\"\\"_ansi, "[a]=@;b"_ansi,
          "line\r\nend\ttab"_ansi, "\\\\\"\""_ansi, "hex:41"_ansi}) {
        EXPECT_TRUE(registry_.set(kUser, kKey, "Nom é \\ \""_ansi, {kRegSz, std::string(text)}));
        EXPECT_EQ(textOf(registry_.query(kUser, kKey, "Nom é \\ \""_ansi)), text);
    }
}

TEST_F(RegistryContract, ARemovedValueIsMissingAndTheOthersStay) {
    EXPECT_TRUE(registry_.set(kUser, kKey, "a", {kRegSz, "1"}));
    EXPECT_TRUE(registry_.set(kUser, kKey, "weg", {kRegSz, "1\r\n2"}));
    EXPECT_TRUE(registry_.set(kUser, kKey, "b", {kRegSz, "3"}));
    EXPECT_TRUE(registry_.remove(kUser, kKey, "WEG"));
    EXPECT_TRUE(registry_.remove(kUser, kKey, "weg")) << "what is not there is removed";
    EXPECT_EQ(textOf(registry_.query(kUser, kKey, "weg")), "(missing)");
    EXPECT_EQ(textOf(registry_.query(kUser, kKey, "a")), "1");
    EXPECT_EQ(textOf(registry_.query(kUser, kKey, "b")), "3");
}

TEST_F(RegistryContract, KeysAndNamesIgnoreCase) {
    EXPECT_TRUE(registry_.set(kUser, kKey, "Scénario"_ansi, {kRegSz, "1"}));
    EXPECT_TRUE(
        registry_.set(kUser, "SOFTWARE\\kalvotests\\REGISTRE", "SCÉNARIO"_ansi, {kRegSz, "2"}));
    EXPECT_EQ(textOf(registry_.query(kUser, kKey, "scénario"_ansi)), "2");
    EXPECT_TRUE(registry_.set(kUser, std::string(kKey) + "\\Sous", "scénario"_ansi, {kRegSz, "3"}));
    EXPECT_EQ(textOf(registry_.query(kUser, kKey, "scénario"_ansi)), "2")
        << "a key below is another key";
}

TEST_F(RegistryContract, OtherTypesKeepTypeAndBytes) {
    constexpr std::uint32_t kRegBinary = 3;
    const std::string number("\x2A\x01\0\xFF", 4);
    EXPECT_TRUE(registry_.set(kUser, kKey, "n", {kRegDword, number}));
    EXPECT_TRUE(registry_.set(kUser, kKey, "b", {kRegBinary, std::string("\0\x80", 2)}));
    EXPECT_EQ(registry_.query(kUser, kKey, "n")->type, kRegDword);
    EXPECT_EQ(registry_.query(kUser, kKey, "n")->data, number);
    EXPECT_EQ(registry_.query(kUser, kKey, "b")->type, kRegBinary);
    EXPECT_EQ(registry_.query(kUser, kKey, "b")->data, std::string("\0\x80", 2));
}

}  // namespace

}  // namespace kalvo::testing
