// What only this system has: its paths, links, permissions, processes and devices.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
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
#include "platform/shared/file_descriptor.h"
#include "tests/support/error_of.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::bytesOf;
using testing::errorOf;
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

    const FileDescriptor stranger(::open(folder.path().c_str(), O_RDONLY));
    ASSERT_EQ(::flock(stranger.number(), LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(profiles.write(folder / "link2.ini", "s", "k", "1"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << "whoever may read a folder can lock it";

    fs::create_symlink("loop.ini", folder / "loop.ini");
    EXPECT_FALSE(profiles.write(folder / "loop.ini", "s", "k", "3"));
}

TEST(ReplacedFiles, AreLeftAloneWithoutPermission) {
    // The superuser, whom no permission stops, is somebody else for the time of the test.
    constexpr uid_t kNobody = 65534;
    const bool wasRoot = ::geteuid() == 0;
    if (wasRoot && ::seteuid(kNobody) != 0) GTEST_SKIP() << "permissions bind nobody";
    {
        const TemporaryFolder folder;
        LinuxProfileFiles profiles;
        const std::string file = folder / "a.ini";
        writeBytes(file, "[s]\r\nk=1\r\n");
        ::chmod(file.c_str(), 0444);
        EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "a protected file";
        ::chmod(file.c_str(), 0644);
        ::chmod(folder.path().c_str(), 0555);
        EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "a protected folder";
        EXPECT_NE(errorOf([&] { (void)LinuxFileSystem().create(folder / "b.txt"); }), 0);
        ::chmod(folder.path().c_str(), 0755);
        EXPECT_EQ(bytesOf(file), "[s]\r\nk=1\r\n");
        ::chmod(file.c_str(), 0);
        EXPECT_FALSE(profiles.write(file, "s", "k", "2")) << "unreadable is not missing";
    }
    ASSERT_TRUE(!wasRoot || ::seteuid(0) == 0);
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
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        children.push_back(::fork());
        if (children.back() != 0) continue;
        bool stored = true;
        for (int i = 0; i < kWrites; ++i) {
            const std::string name = std::to_string(process) + "." + std::to_string(i);
            stored = stored && profiles.write(file, "a", name, "x") &&
                     registry.set(user, "K", name, {kRegSz, "x"});
        }
        ::_exit(stored ? 0 : 1);
    }
    for (const pid_t child : children) {
        int status = 0;
        while (::waitpid(child, &status, WNOHANG) == 0)
            EXPECT_EQ(profiles.read(file, "a", "first") + profiles.read(file, "z", "last"),
                      "herehere");
        EXPECT_EQ(status, 0) << "a write failed";
    }
    for (int i = 0; i < kProcesses * kWrites; ++i) {
        const std::string name = std::to_string(i / kWrites) + "." + std::to_string(i % kWrites);
        EXPECT_EQ(profiles.read(file, "a", name), "x") << name;
        EXPECT_TRUE(registry.query(user, "K", name).has_value()) << name;
    }
    EXPECT_EQ(folder.entries(), 2) << "no temporary file is left";
}

TEST(FullDisk, IsReportedAtTheLatestByClose) {
    LinuxFileSystem files;
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000000}}) {
        const auto stream = files.create("/dev/full");
        EXPECT_EQ(errorOf([&] {
                      stream->write(std::string(size, 'x'));
                      stream->close();
                  }),
                  error_number::kDiskFull);
        EXPECT_NO_THROW(stream->close()) << "told once";
        EXPECT_THROW(stream->write("x"), RuntimeError) << "closed by then";
    }
    files.append("/dev/full")->write("x");  // nobody to tell: quiet
}

TEST(LinesOfAPipe, AreHandedOverAsTheyCome) {
    const TemporaryFolder folder;
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(errorOf([&] { (void)LinuxFileSystem().read(pipe); }), error_number::kPathAccess)
        << "what should be a whole file is not waited for";
    EXPECT_NE(errorOf([&] { (void)LinuxFileSystem().create(pipe); }), 0) << "nor who reads it";
    fs::create_symlink(folder / "elsewhere", folder / "link");
    LinuxFileSystem().createNew(folder / "link")->close();
    EXPECT_FALSE(fs::exists(folder / "elsewhere")) << "a name of ours leads nowhere else";
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

TEST(ForeignNames, AreListedWithQuestionMarks) {
    const TemporaryFolder folder;
    writeBytes(folder / "漢.txt", "");
    EXPECT_EQ(LinuxFileSystem().list(folder.path()), std::vector<std::string>{"?.txt"});
}

}  // namespace
}  // namespace kalvo
