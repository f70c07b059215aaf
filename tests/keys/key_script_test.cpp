#include "keys/key_script.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <string>

#include "keys/key_names.h"
#include "text/ansi_text.h"
#include "text/oem_text.h"

namespace kalvo {
namespace {

std::string nameOf(Key key) {
    switch (key.kind) {
        case Key::Kind::kShift: return "SHIFT";
        case Key::Kind::kControl: return "CTRL";
        case Key::Kind::kAlt: return "ALT";
        case Key::Kind::kNamed: return "#" + std::to_string(key.code);
        case Key::Kind::kLiteral: break;
    }
    return std::string(1, static_cast<char>(key.code));
}

// The events of a script as text: a key that goes down and up at once stands
// alone, "/" marks a key that only goes down, "\" one that only comes up.
std::string read(std::string_view script, std::size_t limit = 100) {
    KeyScriptReader reader(script, ansiToOem);
    std::string text;
    std::string down;
    for (std::size_t i = 0; i < limit; ++i) {
        const auto event = reader.next();
        if (!event) break;
        const std::string name = nameOf(event->key);
        const bool completes = event->action == KeyEvent::Action::kUp && down == name;
        if (!down.empty()) text += (completes ? "" : "/") + down + " ";
        down.clear();
        if (completes) continue;
        if (event->action == KeyEvent::Action::kDown) down = name;
        if (event->action == KeyEvent::Action::kUp) text += "\\" + name + " ";
        if (event->action == KeyEvent::Action::kFlipNumLock) text += "NUM ";
    }
    if (!down.empty()) text += "/" + down + " ";
    if (!text.empty()) text.pop_back();
    return text;
}

struct Reading {
    const char* script;
    const char* events;
};

class ReadingScripts : public ::testing::TestWithParam<Reading> {};

TEST_P(ReadingScripts, GivesTheKeysInOrder) {
    EXPECT_EQ(read(GetParam().script), GetParam().events) << GetParam().script;
}

INSTANTIATE_TEST_SUITE_P(Characters, ReadingScripts,
                         ::testing::Values(Reading{"", ""}, Reading{"ab c", "a b   c"},
                                           Reading{"[]", "[ ]"}, Reading{"~", "#13"},
                                           Reading{"a\tb", "a \t b"}, Reading{"}", "}"}));

INSTANTIATE_TEST_SUITE_P(
    Modifiers, ReadingScripts,
    ::testing::Values(Reading{"+a", "/SHIFT a \\SHIFT"}, Reading{"+ab", "/SHIFT a \\SHIFT b"},
                      Reading{"+(ab)c", "/SHIFT a b \\SHIFT c"},
                      Reading{"^%{DEL}", "/CTRL /ALT #46 \\ALT \\CTRL"},
                      Reading{"++a", "/SHIFT /SHIFT a \\SHIFT \\SHIFT"}, Reading{"a+", "a SHIFT"},
                      Reading{"+(ab", "/SHIFT a b \\SHIFT"},
                      Reading{"%(a(b)c)d", "/ALT a b \\ALT c d"},
                      Reading{"+(a^(b)c)", "/SHIFT a /CTRL b \\CTRL \\SHIFT c"},
                      Reading{"+~", "/SHIFT #13 \\SHIFT"},
                      Reading{"+{a 2}b", "/SHIFT a a \\SHIFT b"}, Reading{"^{TAB x}b", "CTRL"},
                      Reading{"(+a)b", "/SHIFT a \\SHIFT b"}, Reading{"+{ 3}b", "SHIFT b"}));

INSTANTIATE_TEST_SUITE_P(
    Groups, ReadingScripts,
    ::testing::Values(
        Reading{"{enter}", "#13"}, Reading{"{Enter 3}", "#13 #13 #13"}, Reading{"{}}", "}"},
        Reading{"{{}", "{"}, Reading{"{+}", "+"}, Reading{"{~}", "~"}, Reading{"{ab 2}", "a b a b"},
        Reading{"{shift}", "s h i f t"}, Reading{"x{TAB 0}abc", "x"}, Reading{"x{TAB y}abc", "x"},
        Reading{"x{TAB", "x"}, Reading{"{TAB 1.5}", "#9 #9"}, Reading{"{TAB 2.5}", "#9 #9"},
        Reading{"{TAB -2}a", "a"}, Reading{"{TAB}a}b{F1}", "T A B } a b #112"}, Reading{"{}a", "a"},
        Reading{"{a  2}", "a a"}, Reading{"{NUMLOCK 2}", "NUM NUM"},
        Reading{"{PRTSC}{PRTSCR}", "#42 #44"}, Reading{"{", ""}));

TEST(KeyScriptReader, ALargeRepeatCountTakesNoMemory) {
    KeyScriptReader reader("+{ab 2000000000}", ansiToOem);
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(reader.next().has_value());
}

// Reading rewrites as it goes; the result is that of rewriting the whole text first,
// also where a group ends in the middle of a rewritten character.
TEST(KeyScriptReader, ReadsTheRewrittenText) {
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        std::string script;
        for (auto n = random() % 12; n > 0; --n) script += "{} a\xE9\x80+("[random() % 9];
        ASSERT_EQ(read(script), read(ExpandAltNumpad(script, ansiToOem))) << script;
    }
}

// Whatever a script holds, reading it ends and every key that goes down comes up.
TEST(KeyScriptReader, LeavesNothingPressedWhateverTheScript) {
    std::mt19937 random(20240305);
    constexpr auto kPieces =
        std::to_array<std::string_view>({"{", "}", "+", "^", "%", "(", ")", "~", "a", " 3", "TAB",
                                         "{TAB}", "{NUMLOCK 2}", "{", "\xE9", "-1", "0"});
    for (int round = 0; round < 20000; ++round) {
        std::string script;
        for (auto n = random() % 24; n > 0; --n) script += kPieces[random() % kPieces.size()];
        KeyScriptReader reader(script, ansiToOem);
        std::map<std::string, int> down;
        while (const auto event = reader.next()) {
            if (event->action == KeyEvent::Action::kDown) ++down[nameOf(event->key)];
            if (event->action == KeyEvent::Action::kUp) --down[nameOf(event->key)];
        }
        for (const auto& [name, count] : down) ASSERT_EQ(count, 0) << name << " in " << script;
    }
}

TEST(KeyScriptReader, FollowsTheLockKeysAScriptFlips) {
    struct Case {
        const char* script;
        LockTrackers locks;
    };
    for (const auto& [script, locks] : {Case{"abc", {}}, Case{"{CAPSLOCK}", {true, false, false}},
                                        Case{"{NUMLOCK 3}{scrolllock}", {false, true, true}},
                                        Case{"{CAPSLOCK 2}", {}}, Case{"{CAPSLOCK 0}", {}}}) {
        KeyScriptReader reader(script, ansiToOem);
        while (reader.next()) {
        }
        EXPECT_EQ(reader.locks(), locks) << script;
    }
}

TEST(KeyNames, AreFoundInAnyCaseAndNothingElseIs) {
    EXPECT_EQ(KeyNameToCode("F16"), 127);
    EXPECT_EQ(KeyNameToCode("numpad9"), 105);
    EXPECT_EQ(KeyNameToCode("Bksp"), 8);
    for (const char* unknown : {"", "F17", "SHIFT", "CONTROL", "ALT", "ENTER ", "NUMPAD10"})
        EXPECT_EQ(KeyNameToCode(unknown), 0) << unknown;
}

TEST(AltNumpad, ReplacesTheUpperHalfEvenInsideBraces) {
    EXPECT_EQ(ExpandAltNumpad("a{b}~", ansiToOem), "a{b}~");
    EXPECT_EQ(ExpandAltNumpad("é"_ansi, ansiToOem),
              "{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}");
    const std::string alt = "/ALT #97 #99 #96 \\ALT";
    EXPECT_EQ(read(ExpandAltNumpad("é"_ansi, ansiToOem)), "NUM " + alt + " NUM");
    EXPECT_EQ(ExpandAltNumpad("{é}"_ansi, ansiToOem),
              "{{NUMLOCK}%({NUMPAD1}{NUMPAD3}{NUMPAD0}){NUMLOCK}}");
}

}  // namespace
}  // namespace kalvo
