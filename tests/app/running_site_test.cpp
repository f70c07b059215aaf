#include "app/running_site.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/process/service_report.h"
#include "app/run_journal.h"
#include "app/session_watch.h"
#include "app/sites.h"
#include "settings/options.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"

#ifndef _WIN32
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>

#include "app/process/file_lock.h"
#include "platform/shared/file_descriptor.h"
#endif

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::Optional;
using ::testing::StartsWith;

TEST(RunningSite, IsOneForEachFolderAndTellsOfItself) {
    const testing::TemporaryFolder folder;
    EXPECT_EQ(RunningSite::stateOf(folder.path()), std::nullopt);
    {
        RunningSite first(folder.path(), "A", {});
        RunningSite second(folder.path(), "B", {});
        EXPECT_TRUE(first.alone());
        EXPECT_FALSE(second.alone());
        first.tell("a longer line\n");
        first.tell("line\n");
        second.tell("nobody reads this");
        EXPECT_THAT(RunningSite::stateOf(folder.path()),
                    Optional(::testing::AllOf(StartsWith("A, processus "),
                                              ::testing::EndsWith("00:00:00\nline\n"))));
        EXPECT_TRUE(RunningSite(testing::TemporaryFolder().path(), "C", {}).alone());
    }
    EXPECT_EQ(RunningSite::stateOf(folder.path()), std::nullopt);
    EXPECT_TRUE(RunningSite(folder.path(), "D", {}).alone());
}

TEST(SiteOptions, DecideOnTheJournalAndOnWhatIsWatched) {
    const testing::TemporaryFolder folder;
    testing::FakeEventPump events;
    SystemBindings bindings{folder.path(), "",      std::make_unique<testing::SystemProfiles>(),
                            nullptr,       nullptr, nullptr};
    const auto set = [&](Option option, int value) {
        EXPECT_TRUE(setOption(*bindings.profiles, folder.path(), option, value));
    };
    for (const int on : {0, 1}) {
        for (const Option option : {Option::kJournal, Option::kStopKey, Option::kTargetGuard})
            set(option, on);
        EXPECT_EQ(watchRules(bindings).stopKey, on == 1);
        EXPECT_EQ(watchRules(bindings).targetGuard, on == 1);
        EXPECT_EQ(RunJournal(bindings, events, {}).batches().keeps(), on == 1);
    }
    set(Option::kStopKey, 0);
    EXPECT_TRUE(watchRules(bindings).targetGuard);

    // One that cannot be opened at the start is tried again.
    std::filesystem::remove(folder / "Journal.db");
    std::filesystem::create_directory(folder / "Journal.db");
    std::vector<std::string> said;
    RunJournal journal(bindings, events, [&](std::string_view text) { said.emplace_back(text); });
    journal.begin();
    EXPECT_EQ(journal.batches().receive({}, "lost", {}, 0), BatchJournal::kNone);
    std::filesystem::remove(folder / "Journal.db");
    events.tick += 10'000;
    EXPECT_TRUE(journal.batches().receive({}, "kept", {}, 0) == 1);
    journal.batches().typed(1, 1);
    EXPECT_EQ(said.size(), 2U) << "that it is missing, and that it is back";
    const auto typed = [&](std::size_t size) {
        const auto batch = journal.batches().receive({}, std::string(size, 'x'), {}, 0);
        journal.batches().typed(batch, 1);
    };
    events.time = {2024, 4, 4, 0, 0, 0};
    journal.forgetDaily();
    EXPECT_EQ(journal.file()->list(0).size(), 1U) << "30 days are not over";
    events.time.day = 5;
    typed(1);
    journal.forgetDaily();
    EXPECT_EQ(journal.file()->list(0).size(), 1U);
    for (int i = 0; i < 3; ++i) typed(700'000);
    journal.forgetDaily();
    EXPECT_EQ(journal.file()->list(0).size(), 4U) << "once a day";
    set(Option::kJournalMegabytes, 1);
    set(Option::kJournalDays, 0);
    events.time = {2025, 1, 1, 0, 0, 0};
    journal.forgetDaily();
    EXPECT_EQ(journal.file()->list(0).size(), 1U) << "the latest, and no day counts";
}

TEST(KnownSites, AreListedOnceEach) {
    const testing::TemporaryFolder folder;
    testing::SystemProfiles profiles;
    for (const char* site : {"/a", "/b", "/a"}) rememberSite(profiles, folder / "Sites.ini", site);
    EXPECT_THAT(knownSites(profiles, folder / "Sites.ini"), ElementsAre("/a", "/b"));
}

#ifndef _WIN32
// Where others may write they could be first with the file that tells of the site.
TEST(RunningSite, IsNeitherKeptOutNorDoubledByWhatOthersPutIntoItsFolder) {
    for (const bool link : {true, false}) {
        if (!link && geteuid() != 0) continue;  // only root can give a file away
        const testing::TemporaryFolder folder;
        const std::string state = folder / "kalvo-horizon.etat";
        if (link) std::filesystem::create_symlink(folder / "elsewhere", state);
        FileLock squatter(state);
        EXPECT_EQ(squatter.take(), true);
        EXPECT_TRUE(link || chown(state.c_str(), 65534, 65534) == 0);
        const RunningSite first(folder.path(), "A", {});
        EXPECT_TRUE(first.alone());
        EXPECT_FALSE(RunningSite(folder.path(), "B", {}).alone());
        EXPECT_EQ(RunningSite::stateOf(folder.path()), std::nullopt);
        EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
    }
}

TEST(ServiceReport, GoesToWhoeverAskedForIt) {
    const testing::TemporaryFolder folder;
    const std::string path = folder / "notify";
    const FileDescriptor manager(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    ASSERT_EQ(bind(manager.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
              0);
    setenv("NOTIFY_SOCKET", path.c_str(), 1);
    reportToServiceManager("READY=1");
    unsetenv("NOTIFY_SOCKET");
    reportToServiceManager("STATUS=unasked");
    std::array<char, 100> report{};
    const ssize_t size = recv(manager.number(), report.data(), report.size(), 0);
    ASSERT_GT(size, 0);
    EXPECT_EQ(std::string(report.data(), static_cast<std::size_t>(size)), "READY=1");
    EXPECT_LT(recv(manager.number(), report.data(), report.size(), 0), 0);
}
#endif

}  // namespace
}  // namespace kalvo
