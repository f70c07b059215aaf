#include "app/commands/command_line.h"

#include <gtest/gtest.h>

#include <string>

#include "app/commands/commands.h"
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

}  // namespace
}  // namespace kalvo
