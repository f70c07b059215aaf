#include "app/command_line.h"

#include <gtest/gtest.h>

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
        parse({"--app-dir", "/site", "script", "--scenario", "Stock", "-", "--date", "01/02/24"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->command, "script");
    EXPECT_EQ(line->applicationFolder, "/site");
    EXPECT_EQ(line->scenario, "Stock");
    EXPECT_EQ(line->date, "01/02/24");
    EXPECT_EQ(line->arguments, std::vector<std::string>{"-"});
    EXPECT_EQ(parse({})->command, "");
    EXPECT_EQ(parse({"--app-dir", "/site"})->command, "");
    EXPECT_TRUE(parse({"events", "--help"})->help);
    EXPECT_EQ(parse({"replay", "f.txt", "--separator", "-"})->separator, "-");
}

TEST(CommandLineMistakes, AreRefused) {
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"ecouter"},
                                               {"script"},
                                               {"script", "a", "b"},
                                               {"script", "--layout", "fr", "a"},
                                               {"script", "a", "--scenario"},
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
    }
}

}  // namespace
}  // namespace kalvo
