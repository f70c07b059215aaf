#include "app/commands/commands.h"

#include <gtest/gtest.h>

#include <string>

#include "app/commands/command_line.h"
#include "app/commands/event_listing.h"
#include "keys/key_injection.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_keyboard.h"
#include "tests/support/words.h"

namespace kalvo {
namespace {

using testing::words;

CommandLine parse(const std::string& arguments) {
    std::string problem;
    const auto line = parseCommandLine(words(arguments), problem);
    EXPECT_TRUE(line && problem.empty()) << problem;
    return line.value_or(CommandLine{});
}

std::string commandOf(const CommandLine& line) {
    return line.command == nullptr ? "" : line.command->name;
}

TEST(CommandLineOptions, StandBeforeOrBehindTheCommand) {
    const auto script = parse("--app-dir /site script --scenario Stock - --date 29/02/24");
    EXPECT_EQ(commandOf(script), "script");
    EXPECT_EQ(script.applicationFolder, "/site");
    EXPECT_EQ(script.scenario, "Stock");
    EXPECT_EQ(script.date->day, 29);
    EXPECT_EQ(script.date->year, 2024);
    EXPECT_EQ(script.file, "-");
    EXPECT_EQ(parse("script f --app-dir /site").applicationFolder, "/site");
    EXPECT_EQ(parse("--app-dir '' ports").applicationFolder, "");
    EXPECT_EQ(commandOf(parse("")), "");
    EXPECT_EQ(commandOf(parse("--app-dir /site")), "");
    EXPECT_EQ(parse("--autostart on").autostart, true);
    EXPECT_EQ(parse("replay f.txt --separator -").separator, "-");
    EXPECT_EQ(parse("type --pause 250 -- -x\xFF").file, "-x\xFF");
    EXPECT_EQ(parse("type --pause 7 --pause 010 f").pause, 10);
    EXPECT_EQ(commandOf(parse("compile listen")), "compile");
    EXPECT_EQ(parse("compile listen").scenario, "listen");
    for (const char* call : {"events --help", "--help script", "-h"})
        EXPECT_NE(parse(call).answer.value_or("").find("affiche"), std::string::npos) << call;
    EXPECT_NE(parse("script --version").answer.value_or("").find("kalvo"), std::string::npos);
}

TEST(CommandLineMistakes, AreRefusedInFrench) {
    for (const char* call :
         {"ecouter", "script", "script a b", "script --layout fr a", "script a --scenario",
          "script a --date 31/02/24", "script a --date 1/2/24x", "events a --locks X",
          "type a --pause x", "type a --pause ''", "type a listen", "replay a", "compile",
          "compile --all Stock", "listen x", "events --verbose f", "--autostart yes",
          "listen --autostart on", "--all"}) {
        std::string problem;
        EXPECT_FALSE(parseCommandLine(words(call), problem)) << call;
        EXPECT_FALSE(problem.empty()) << call;
        for (const char* english : {"required", "expected", "excludes", "Could"})
            EXPECT_EQ(problem.find(english), std::string::npos) << problem;
    }
}

std::string list(std::string_view script, std::string_view locks) {
    testing::FakeKeyboard layout;
    testing::FakeEventPump events;
    std::string text;
    EventListing listing(layout, locks, [&](std::string_view piece) { text += piece; });
    Keysend(listing, events).SendKeyScript(script, 0);
    listing.finish();
    return text;
}

TEST(EventListing, HasALineForEachInjection) {
    EXPECT_EQ(list("aB", ""),
              "down vk=0041 sc=00C1\n"
              "up vk=0041 sc=00C1\n"
              "down vk=0010 sc=0090; down vk=0142 sc=00C2\n"
              "up vk=0010 sc=0090; up vk=0142 sc=00C2\n");
    EXPECT_EQ(list("", ""), "");
}

TEST(EventListing, LocksThatAreOnAreSwitchedOffAndBackOn) {
    const std::string capsLock = "down vk=0014 sc=0094\nup vk=0014 sc=0094\n";
    const std::string scrollLock = "down vk=0091 sc=0011\nup vk=0091 sc=0011\n";
    const std::string letter = "down vk=0041 sc=00C1\nup vk=0041 sc=00C1\n";
    EXPECT_EQ(list("a", "CS"), capsLock + scrollLock + letter + capsLock + scrollLock);
    EXPECT_EQ(list("{CAPSLOCK}", "C"), capsLock + capsLock)
        << "off at first, then the script's own";
}

}  // namespace
}  // namespace kalvo
