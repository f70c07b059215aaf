// What only this system has: its paths, links, permissions, processes and devices.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/linux_file_system.h"
#include "platform/linux/native_path.h"
#include "platform/linux/settings/linux_profile_files.h"
#include "platform/linux/settings/registry_file.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::bytesOf;
using testing::TemporaryFolder;
using testing::writeBytes;

TEST(NativePath, FollowsOneRule) {
    struct Case {
        std::string_view path, expected;
    };
    for (const auto& [path, expected] :
         {Case{"C:\\TEMP\\lot.txt", "/TEMP/lot.txt"}, Case{"c:lot.txt", "lot.txt"},
          Case{"a\\b/c", "a/b/c"}, Case{"\\\\srv\\x", "//srv/x"}, Case{"é€\\œ"_ansi, "é€/œ"},
          Case{"12:x", "12:x"}, Case{"é:x"_ansi, "é:x"}, Case{"/a:b", "/a:b"}, Case{"C:", ""},
          Case{"", ""}})
        EXPECT_EQ(nativePath(path), expected);
}

TEST(LinuxPaths, BothSeparatorsReachTheSameFile) {
    const TemporaryFolder folder;
    LinuxFileSystem files;
    LinuxProfileFiles profiles;
    files.createFolder("C:" + folder.path() + "\\Scenarios");
    EXPECT_TRUE(
        profiles.write("C:" + folder.path() + "\\Scenarios\\é.ini"_ansi.data(), "s", "k", "v"));
    EXPECT_TRUE(fs::exists(folder / "Scenarios/é.ini"));
    EXPECT_EQ(profiles.read(folder.path() + "/Scenarios\\é.ini"_ansi.data(), "s", "k"), "v");
}

TEST(ReplacedFiles, KeepPermissionsAndLinks) {
    const TemporaryFolder folder;
    LinuxProfileFiles profiles;
    fs::create_directory(folder / "real");
    writeBytes(folder / "real/a.ini", "[s]\r\n");
    ::chmod((folder / "real/a.ini").c_str(), 0640);
    fs::create_symlink("real/a.ini", folder / "link.ini");
    fs::create_symlink(folder / "link.ini", folder / "link2.ini");
    fs::create_symlink("real/new.ini", folder / "dangling.ini");

    EXPECT_TRUE(profiles.write(folder / "link2.ini", "s", "k", "1"));
    EXPECT_TRUE(profiles.write(folder / "dangling.ini", "s", "k", "2"));
    EXPECT_EQ(bytesOf(folder / "real/a.ini"), "[s]\r\nk=1\r\n");
    EXPECT_EQ(bytesOf(folder / "real/new.ini"), "[s]\r\nk=2\r\n");
    EXPECT_TRUE(fs::is_symlink(folder / "link2.ini"));
    EXPECT_TRUE(fs::is_symlink(folder / "dangling.ini"));
    EXPECT_EQ(fs::status(folder / "real/a.ini").permissions(), fs::perms{0640});
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "real"), {}), 2) << "nothing else left";

    fs::create_symlink("loop.ini", folder / "loop.ini");
    EXPECT_FALSE(profiles.write(folder / "loop.ini", "s", "k", "3"));
}

// The superuser, whom no permission stops, is somebody else for the time of a test.
class OrdinaryUser {
public:
    OrdinaryUser() : wasRoot_(::geteuid() == 0) {
        if (wasRoot_) static_cast<void>(::seteuid(kNobody) == 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (wasRoot_) static_cast<void>(::seteuid(0) == 0);
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool wasRoot_;
};

TEST(ReplacedFiles, AreLeftAloneWithoutPermission) {
    const OrdinaryUser user;
    if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
    const TemporaryFolder folder;
    LinuxProfileFiles profiles;
    LinuxFileSystem files;
    const std::string file = folder / "a.ini";
    writeBytes(file, "[s]\r\nk=1\r\n");
    ::chmod(file.c_str(), 0444);
    EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "a protected file";
    ::chmod(file.c_str(), 0644);
    ::chmod(folder.path().c_str(), 0555);
    EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "a protected folder";
    EXPECT_THROW(static_cast<void>(files.create(folder / "b.txt")), RuntimeError);
    ::chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(bytesOf(file), "[s]\r\nk=1\r\n");
    ::chmod(file.c_str(), 0);
    EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "unreadable is not missing";
}

TEST(ReplacedFiles, OddFilesAreRefused) {
    const TemporaryFolder folder;
    LinuxProfileFiles profiles;
    ASSERT_EQ(::mkfifo((folder / "pipe.ini").c_str(), 0600), 0);
    EXPECT_EQ(profiles.read(folder / "pipe.ini", "s", "k"), "") << "and does not wait";
    EXPECT_FALSE(profiles.write(folder / "pipe.ini", "s", "k", "v"));
    EXPECT_FALSE(profiles.write("", "s", "k", "v"));
    RegistryFile registry("/dev/null/conf/registre.reg");
    EXPECT_FALSE(registry.set(RegistryRoot::kCurrentUser, "K", "n", {kRegSz, "v"}));
    EXPECT_FALSE(registry.query(RegistryRoot::kCurrentUser, "K", "n").has_value());
    EXPECT_EQ(folder.entries(), 1);
}

// Runs `work(i)` in `count` processes at once and `meanwhile` until all have ended.
template <typename Work, typename Meanwhile>
void inProcesses(int count, const Work& work, const Meanwhile& meanwhile) {
    std::vector<pid_t> children;
    for (int i = 0; i < count; ++i) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) ::_exit(work(i) ? 0 : 1);
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        while (::waitpid(child, &status, WNOHANG) == 0) meanwhile();
        EXPECT_EQ(status, 0) << "a write failed";
    }
}

TEST(ConcurrentProcesses, LoseNoValueAndSeeWholeFiles) {
    constexpr int kProcesses = 4;
    constexpr int kWrites = 20;
    const TemporaryFolder folder;
    const std::string file = folder / "shared.ini";
    LinuxProfileFiles profiles;
    RegistryFile registry(folder / "registre.reg");
    const auto user = RegistryRoot::kCurrentUser;
    ASSERT_TRUE(profiles.write(file, "a", "first", "here"));
    ASSERT_TRUE(profiles.write(file, "z", "last", "here"));
    const auto name = [](int process, int i) {
        return std::to_string(process) + "." + std::to_string(i);
    };
    inProcesses(
        kProcesses,
        [&](int process) {
            bool stored = true;
            for (int i = 0; i < kWrites; ++i)
                stored = stored && profiles.write(file, "a", name(process, i), "x") &&
                         registry.set(user, "K", name(process, i), {kRegSz, "x"});
            return stored;
        },
        [&] {
            EXPECT_EQ(profiles.read(file, "a", "first"), "here");
            EXPECT_EQ(profiles.read(file, "z", "last"), "here");
        });
    for (int process = 0; process < kProcesses; ++process)
        for (int i = 0; i < kWrites; ++i) {
            EXPECT_EQ(profiles.read(file, "a", name(process, i)), "x") << name(process, i);
            EXPECT_TRUE(registry.query(user, "K", name(process, i)).has_value());
        }
    EXPECT_EQ(folder.entries(), 2) << "no temporary file is left";
}

int errorOfWriting(TextStream& stream, std::string_view bytes) {
    try {
        stream.write(bytes);
        stream.close();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.description(), "Disque plein : /dev/full");
        return error.number();
    }
    return 0;
}

TEST(FullDisk, IsReportedAtTheLatestByClose) {
    LinuxFileSystem files;
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000000}}) {
        const auto stream = files.create("/dev/full");
        EXPECT_EQ(errorOfWriting(*stream, std::string(size, 'x')), error_number::kDiskFull);
        EXPECT_NO_THROW(stream->close()) << "told once";
        EXPECT_THROW(stream->write("x"), RuntimeError) << "closed by then";
    }
    files.append("/dev/full")->write("x");  // nobody to tell: quiet
}

TEST(LinesOfAPipe, AreHandedOverAsTheyCome) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::binary_semaphore seen{0};
    std::thread writer([&] {
        std::ofstream out(pipe, std::ios::binary);
        out << "one\r\ntw" << std::flush;
        seen.acquire();  // for ever, if lines only came at the end
        out << "o";
    });
    std::vector<std::string> lines;
    LinuxFileSystem().readLines(pipe, [&](std::string_view line) {
        lines.emplace_back(line);
        if (lines.size() == 1) seen.release();
    });
    writer.join();
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two"}));
}

TEST(UserFolders, IgnoreRelativeVariables) {
    const char* const old = std::getenv("XDG_CONFIG_HOME");
    const std::string saved = old == nullptr ? "" : old;
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_TRUE(defaultRegistryFile().ends_with("/.config/kalvo-horizon/registre.reg"));
    ::setenv("XDG_CONFIG_HOME", "/etc/u", 1);
    EXPECT_EQ(defaultRegistryFile(), "/etc/u/kalvo-horizon/registre.reg");
    old == nullptr ? ::unsetenv("XDG_CONFIG_HOME") : ::setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
}

TEST(ForeignNames, AreListedWithQuestionMarks) {
    const TemporaryFolder folder;
    writeBytes(folder / "漢.txt", "");
    EXPECT_EQ(LinuxFileSystem().list(folder.path()), std::vector<std::string>{"?.txt"});
}

}  // namespace
}  // namespace kalvo
