#include <string>

#include "tests/bindings/binding_contracts.h"
#include "text/ansi_text.h"

namespace kalvo::testing {
namespace {

constexpr auto kUser = RegistryRoot::kCurrentUser;
constexpr std::string_view kKey = "Software\\KalvoTests\\Registre";

// The text of a value as its readers take it: up to the first NUL.
std::string textOf(const std::optional<RegistryValue>& value) {
    if (!value) return "(missing)";
    if (value->type != kRegSz) return "(type " + std::to_string(value->type) + ")";
    return value->data.substr(0, value->data.find('\0'));
}

TEST_P(RegistryContract, WhatWasNeverSetIsMissing) {
    EXPECT_FALSE(binding_->query(kUser, "Software\\KalvoTests\\Jamais", "x").has_value());
    EXPECT_TRUE(binding_->set(kUser, kKey, "other", {kRegSz, "1"}));
    EXPECT_FALSE(binding_->query(kUser, kKey, "x").has_value());
}

TEST_P(RegistryContract, TextsComeBackAsTheyWereSet) {
    for (const std::string_view text :
         {""_ansi, "."_ansi, " Entrée € œ "_ansi, "C:\\out\\\"x\"\\"_ansi, "[a]=@;b"_ansi,
          "line\r\nend\ttab"_ansi, "\\\\\"\""_ansi, "hex:41"_ansi}) {
        EXPECT_TRUE(binding_->set(kUser, kKey, "Nom é \\ \""_ansi, {kRegSz, std::string(text)}));
        EXPECT_EQ(textOf(binding_->query(kUser, kKey, "Nom é \\ \""_ansi)), text);
    }
}

TEST_P(RegistryContract, KeysAndNamesIgnoreCase) {
    EXPECT_TRUE(binding_->set(kUser, kKey, "Scénario"_ansi, {kRegSz, "1"}));
    EXPECT_TRUE(
        binding_->set(kUser, "SOFTWARE\\kalvotests\\REGISTRE", "SCÉNARIO"_ansi, {kRegSz, "2"}));
    EXPECT_EQ(textOf(binding_->query(kUser, kKey, "scénario"_ansi)), "2");
    EXPECT_TRUE(binding_->set(kUser, std::string(kKey) + "\\Sous", "scénario"_ansi, {kRegSz, "3"}));
    EXPECT_EQ(textOf(binding_->query(kUser, kKey, "scénario"_ansi)), "2")
        << "a key below is another key";
}

TEST_P(RegistryContract, OtherTypesKeepTypeAndBytes) {
    constexpr std::uint32_t kRegBinary = 3;
    const std::string number("\x2A\x01\0\xFF", 4);
    EXPECT_TRUE(binding_->set(kUser, kKey, "n", {kRegDword, number}));
    EXPECT_TRUE(binding_->set(kUser, kKey, "b", {kRegBinary, std::string("\0\x80", 2)}));
    EXPECT_EQ(binding_->query(kUser, kKey, "n")->type, kRegDword);
    EXPECT_EQ(binding_->query(kUser, kKey, "n")->data, number);
    EXPECT_EQ(binding_->query(kUser, kKey, "b")->type, kRegBinary);
    EXPECT_EQ(binding_->query(kUser, kKey, "b")->data, std::string("\0\x80", 2));
}

}  // namespace

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RegistryContract);

}  // namespace kalvo::testing
