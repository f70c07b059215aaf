#include "platform/spdlog/rotating_log.h"

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

TEST(RotatingLog, WritesEachEntryAtOnceAsOneLineOfUtf8) {
    const testing::TemporaryFolder folder;
    RotatingLog log(folder.path(), LogEcho::kNone);
    log.write(LogLevel::kError, "Erreur N° : 70\r\n\r\nRefusée {} %s"_ansi);
    log.write(LogLevel::kWarning, "b");
    log.write(LogLevel::kInformation, "c");
    EXPECT_THAT(testing::bytesOf(folder / "kalvo-horizon.log"),
                ::testing::MatchesRegex(
                    ".*-.*-.* .*:.*:.*\\..* \\[erreur\\] Erreur N° : 70 \\| Refusée \\{\\} %s\r?\n"
                    ".* \\[avertissement\\] b\r?\n.* \\[information\\] c\r?\n"));
}

TEST(RotatingLog, KeepsFiveFilesOfAMegabyte) {
    const testing::TemporaryFolder folder;
    RotatingLog log(folder.path(), LogEcho::kNone);
    const std::string line(10'000, 'x');
    for (int i = 0; i < 700; ++i) log.write(LogLevel::kInformation, line);
    log.write(LogLevel::kInformation, "latest");
    EXPECT_LE(folder.entries(), 6) << "five files, and on Windows the mark of the owner";
    EXPECT_GT(testing::bytesOf(folder / "kalvo-horizon.4.log").size(), 1'000'000U);
    EXPECT_THAT(testing::bytesOf(folder / "kalvo-horizon.log"), ::testing::HasSubstr("latest"));
}

TEST(RotatingLog, IsWrittenByOneAtATimeAndDisturbsNobodyWhereItCannotBe) {
    const testing::TemporaryFolder folder;
    {
        RotatingLog first(folder.path(), LogEcho::kNone);
        RotatingLog second(folder.path(), LogEcho::kNone);
        second.write(LogLevel::kInformation, "second");
        first.write(LogLevel::kInformation, "first");
    }
    RotatingLog(folder.path(), LogEcho::kNone).write(LogLevel::kInformation, "third");
    EXPECT_THAT(testing::bytesOf(folder / "kalvo-horizon.log"),
                ::testing::MatchesRegex(".*first\r?\n.*third\r?\n"));
    std::filesystem::create_directory(folder / "taken");
    std::filesystem::create_directory(folder / "taken/kalvo-horizon.log");
    for (const char* const nowhere : {"taken", "absent"})
        RotatingLog(folder / nowhere, LogEcho::kNone).write(LogLevel::kError, "lost");
}

}  // namespace
}  // namespace kalvo
