#include "app/commands/command_line.h"

#include <gtest/gtest.h>

#include "app/commands/commands.h"

namespace kalvo {
namespace {

std::optional<CommandLine> parse(const std::vector<std::string>& arguments) {
    std::string problem;
    auto line = parseCommandLine(arguments, problem);
    EXPECT_EQ(line.has_value(), problem.empty()) << problem;
    return line;
}

TEST(CommandLineOptions, StandBeforeOrBehindTheCommand) {
    const auto line =
        parse({"--app-dir", "/site", "script", "--scenario", "Stock", "-", "--date", "29/02/24"});
    ASSERT_TRUE(line);
    EXPECT_STREQ(line->command->name, "script");
    EXPECT_EQ(line->applicationFolder, "/site");
    EXPECT_EQ(line->scenario, "Stock");
    EXPECT_EQ(line->date->day, 29);
    EXPECT_EQ(line->date->year, 2024);
    EXPECT_EQ(line->file, "-");
    EXPECT_EQ(parse({"script", "f", "--app-dir", "/site"})->applicationFolder, "/site");
    EXPECT_EQ(parse({})->command, nullptr);
    EXPECT_EQ(parse({"--app-dir", "/site"})->command, nullptr);
    EXPECT_TRUE(parse({"--autostart", "on"})->autostart.value());
    EXPECT_EQ(parse({"replay", "f.txt", "--separator", "-"})->separator, "-");
    EXPECT_EQ(parse({"type", "--pause", "250", "--", "-x\xFF"})->file, "-x\xFF");
    EXPECT_EQ(parse({"type", "--pause", "7", "--pause", "010", "f"})->pause, 10);
    EXPECT_EQ(parse({"--app-dir", "", "ports"})->applicationFolder, "");
    const auto compile = parse({"compile", "listen"});
    EXPECT_STREQ(compile->command->name, "compile");
    EXPECT_EQ(compile->scenario, "listen");
    for (const auto& help :
         {parse({"events", "--help"}), parse({"--help", "script"}), parse({"-h"})})
        EXPECT_NE(help->answer->find("affiche"), std::string::npos);
    EXPECT_NE(parse({"script", "--version"})->answer->find("kalvo"), std::string::npos);
}

TEST(CommandLineMistakes, AreRefused) {
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"ecouter"},
                                               {"script"},
                                               {"script", "a", "b"},
                                               {"script", "--layout", "fr", "a"},
                                               {"script", "a", "--scenario"},
                                               {"script", "a", "--date", "31/02/24"},
                                               {"script", "a", "--date", "1/2/24x"},
                                               {"events", "a", "--locks", "X"},
                                               {"type", "a", "--pause", "x"},
                                               {"type", "a", "--pause", ""},
                                               {"type", "a", "listen"},
                                               {"replay", "a"},
                                               {"compile"},
                                               {"compile", "--all", "Stock"},
                                               {"listen", "x"},
                                               {"events", "--verbose", "f"},
                                               {"--autostart", "yes"},
                                               {"listen", "--autostart", "on"},
                                               {"--all"}}) {
        std::string problem;
        EXPECT_FALSE(parseCommandLine(arguments, problem)) << arguments.front();
        EXPECT_FALSE(problem.empty());
        for (const char* english : {"required", "expected", "excludes", "Could"})
            EXPECT_EQ(problem.find(english), std::string::npos) << problem;
    }
}

}  // namespace
}  // namespace kalvo
