#include "core/settings_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/fake_keyboard.h"
#include "tests/support/fake_profile_files.h"
#include "tests/support/fake_registry.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(IniValues, ReaderTakesTheFileFirstAndWriterLast) {
    testing::FakeProfileFiles files;
    EXPECT_NE(WriteIniValue(files, "Type", "Nom", "Stock", "a.ini"), 0);
    EXPECT_EQ(ReadIniValue(files, "a.ini", "Type", "Nom"), "Stock");
    EXPECT_EQ(ReadIniValue(files, "b.ini", "Type", "Nom"), "");

    ClearIniValue(files, "a.ini", "Type", "Nom");
    EXPECT_EQ(files.writes.back(), "a.ini[Type]Nom=");

    files.readOnly = true;
    EXPECT_EQ(WriteIniValue(files, "Type", "Nom", "x", "a.ini"), 0);
}

TEST(RegistryValues, AreReadBackAsWritten) {
    testing::FakeRegistry registry;
    const auto root = RegistryRoot::kCurrentUser;
    EXPECT_EQ(GetValueKey(registry, root, kSettingsKey, kSepDec), "") << "missing";
    SetValueKey(registry, root, kSettingsKey, kSepDec, ",");
    EXPECT_EQ(GetValueKey(registry, root, kSettingsKey, kSepDec), ",");
    EXPECT_EQ(registry.query(root, kSettingsKey, kSepDec)->data.size(), 1U)
        << "no terminator is stored";

    registry.set(root, kSettingsKey, kRacCde, {kRegSz, std::string("Stock\0\0", 7)});
    EXPECT_EQ(readSetting(registry, kRacCde), "Stock") << "a stored terminator is cut";
    registry.set(root, kSettingsKey, kRacCde, {kRegDword, std::string("\x01\0\0\0", 4)});
    EXPECT_EQ(readSetting(registry, kRacCde), "") << "another type is no text";
}

TEST(Fields, AreEndedByTheirSeparator) {
    struct Case {
        const char* text;
        std::size_t n;
        const char* separator;
        const char* expected;
    };
    for (const auto& [text, n, separator, expected] :
         {Case{"A;B;C", 3, ";", ""}, Case{"A;B;C;", 3, ";", "C"}, Case{";B;", 1, ";", ""},
          Case{";B;", 2, ";", "B"}, Case{"A;B;", 0, ";", ""}, Case{"A;B;", 9, ";", ""},
          Case{"X{TIMER}Y{TIMER}", 1, "{TIMER}", "X"},
          Case{"X{TIMER}Y{TIMER}", 2, "{TIMER}", "TIMER}Y"},
          Case{"X{TIMER}{TIMER}", 2, "{TIMER}", "TIMER}"}, Case{"aaa", 2, "aa", ""},
          Case{"aaab", 2, "aa", ""}, Case{"A", 1, "", ""}})
        EXPECT_EQ(GetField(text, n, separator), expected) << text << " field " << n;
}

TEST(Fields, ASearchResumesInsideALongSeparator) {
    // The second "aa" begins one character behind the first.
    EXPECT_EQ(GetField("xaaay", 2, "aa"), "");
    FieldCursor cursor("xaaay", "aa");
    EXPECT_EQ(cursor.next(), "x");
    EXPECT_EQ(cursor.next(), "");
    EXPECT_TRUE(cursor.found()) << "an empty field between two separators";
    cursor.next();
    EXPECT_FALSE(cursor.found());
}

TEST(Separators, AreCountedWithoutOverlap) {
    EXPECT_EQ(CountSeparators("", ";"), 0U);
    EXPECT_EQ(CountSeparators("A;;B;", ";"), 3U);
    EXPECT_EQ(CountSeparators("aaaa", "aa"), 2U);
    EXPECT_EQ(CountSeparators("{TIMER}x{TIMER", "{TIMER}"), 1U);
    EXPECT_EQ(CountSeparators("abc", ""), 0U);
}

TEST(LockKeys, AreOnOnlyWhenToggledAndNotHeld) {
    testing::FakeKeyboard keyboard;
    EXPECT_FALSE(IsCapsLockOn(keyboard));
    keyboard.setLock(kVkCapital, true);
    keyboard.setLock(kVkNumLock, true);
    EXPECT_TRUE(IsCapsLockOn(keyboard));
    EXPECT_TRUE(IsNumLockOn(keyboard));

    class Held : public testing::FakeKeyboard {
        std::int16_t GetKeyState(int) override { return static_cast<std::int16_t>(0x8001); }
    } held;
    EXPECT_FALSE(IsCapsLockOn(held)) << "held down while toggled";
}

TEST(LockKeys, FlipWithOneExtendedPressAndRelease) {
    testing::FakeKeyboard keyboard;
    CapsLockOff(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, IsEmpty()) << "already off";

    InvertNumLock(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("90 01", "90 03"));
    EXPECT_TRUE(IsNumLockOn(keyboard));
    InvertNumLock(keyboard);
    EXPECT_FALSE(IsNumLockOn(keyboard)) << "pressed whatever the state";

    keyboard.setLock(kVkCapital, true);
    keyboard.keybdEvents.clear();
    CapsLockOff(keyboard);
    CapsLockOff(keyboard);
    EXPECT_THAT(keyboard.keybdEvents, ElementsAre("14 01", "14 03"));
}

}  // namespace
}  // namespace kalvo
