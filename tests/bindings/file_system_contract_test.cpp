// What the file system of every system has to do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/system_bindings.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"

namespace kalvo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

struct FileSystemContract : ::testing::Test {
    TemporaryFolder folder_;
    SystemFiles files_;
};

TEST_F(FileSystemContract, CreatesReplacesAppendsAndRemoves) {
    const std::string file = folder_ / "lot.txt";
    EXPECT_FALSE(files_.fileExists(file));
    const auto stream = files_.create(file);
    stream->write("A\r\n");
    stream->write(std::string("\0\xE9", 2));
    stream->close();
    files_.append(file)->write("B");  // closed by its end
    EXPECT_EQ(files_.read(file), std::string("A\r\n\0\xE9"
                                             "B",
                                             6));
    EXPECT_EQ(files_.size(file), 6U);

    files_.create(file)->close();
    EXPECT_EQ(files_.read(file), "") << "create empties what was there";
    EXPECT_TRUE(files_.fileExists(file));
    files_.remove(file);
    EXPECT_FALSE(files_.fileExists(file));
    files_.append(file)->close();
    EXPECT_TRUE(files_.fileExists(file)) << "append creates";
}

TEST_F(FileSystemContract, KeepsLargeContentsWhole) {
    const std::string file = folder_ / "large.txt";
    std::string content;
    for (int i = 0; content.size() < 1000000; ++i) content += std::to_string(i) + "\r\n";
    const auto stream = files_.create(file);
    for (std::size_t at = 0; at < content.size(); at += 777)
        stream->write(std::string_view(content).substr(at, 777));
    stream->close();
    EXPECT_TRUE(files_.read(file) == content);
    std::string joined;
    files_.readLines(file, [&](std::string_view line) { (joined += line) += "\r\n"; });
    EXPECT_TRUE(joined == content) << "lines across blocks";
}

TEST_F(FileSystemContract, ReadsInPiecesAndRenamesInPlaceOfAFile) {
    const std::string from = folder_ / "lot.part";
    const std::string to = folder_ / "lot.txt";
    writeBytes(from, std::string("ab\0\r\n\xE9z", 7));
    writeBytes(to, "old");
    files_.rename(from, to);
    EXPECT_FALSE(files_.fileExists(from));
    std::array<char, 3> piece{};
    std::string joined;
    const auto source = files_.open(to);
    while (const std::size_t got = source->read(piece)) joined.append(piece.data(), got);
    EXPECT_EQ(joined, std::string("ab\0\r\n\xE9z", 7));
}

TEST_F(FileSystemContract, HandsOverLinesWithoutTheirEnds) {
    struct Case {
        std::string content;
        std::vector<std::string> lines;
    };
    for (const auto& [content, expected] :
         {Case{"", {}}, Case{"a", {"a"}}, Case{"a\r\nb\nc", {"a", "b", "c"}},
          Case{"a\r\r\nb", {"a\r", "b"}}, Case{"a\rb\n", {"a\rb"}}, Case{"\r\n\n", {"", ""}},
          Case{"a\r", {"a\r"}}, Case{std::string("\0\n", 2), {std::string(1, '\0')}},
          // A line end cut in two by any likely block size.
          Case{std::string(65535, 'x') + "\r\ny\r\n", {std::string(65535, 'x'), "y"}},
          Case{std::string(65536, 'x') + "\r\ny", {std::string(65536, 'x'), "y"}}}) {
        const std::string file = folder_ / "lines.txt";
        writeBytes(file, content);
        std::vector<std::string> lines;
        files_.readLines(file, [&](std::string_view line) { lines.emplace_back(line); });
        EXPECT_TRUE(lines == expected) << content.substr(0, 20) << " gave " << lines.size();
    }
}

TEST_F(FileSystemContract, TellsFilesFromFolders) {
    const std::string inner = folder_ / "Scenarios";
    files_.createFolder(inner);
    files_.create(folder_ / "lot.txt")->close();
    EXPECT_TRUE(files_.folderExists(inner));
    EXPECT_FALSE(files_.fileExists(inner));
    EXPECT_FALSE(files_.folderExists(folder_ / "lot.txt"));
    EXPECT_THAT(files_.list(folder_.path()), UnorderedElementsAre("Scenarios", "lot.txt"));
    EXPECT_THAT(files_.list(inner), IsEmpty());

    const std::string accented = inner + kPathSeparator + std::string("réf€.ini"_ansi);
    files_.create(accented)->close();
    EXPECT_TRUE(files_.fileExists(accented));
    EXPECT_THAT(files_.list(inner), ElementsAre("réf€.ini"_ansi));
}

TEST_F(FileSystemContract, FailuresHaveTheirNumbers) {
    const std::string missing = folder_ / "missing.txt";
    const std::string nowhere = (folder_ / "nowhere") + kPathSeparator + "a.txt";
    const auto lines = [](std::string_view) {};
    struct Case {
        const char* statement;
        int number;
        std::function<void()> run;
    };
    for (const auto& [statement, number, run] : std::vector<Case>{
             {"read", 53, [&] { static_cast<void>(files_.read(missing)); }},
             {"open", 53, [&] { static_cast<void>(files_.open(missing)); }},
             {"open folder", 75, [&] { static_cast<void>(files_.open(folder_.path())); }},
             {"rename", 53, [&] { files_.rename(missing, folder_ / "a.txt"); }},
             {"read below", 76, [&] { static_cast<void>(files_.read(nowhere)); }},
             {"lines", 53, [&] { files_.readLines(missing, lines); }},
             {"size", 53, [&] { static_cast<void>(files_.size(missing)); }},
             {"remove", 53, [&] { files_.remove(missing); }},
             {"create below", 76, [&] { static_cast<void>(files_.create(nowhere)); }},
             {"append below", 76, [&] { static_cast<void>(files_.append(nowhere)); }},
             {"folder below", 76, [&] { files_.createFolder(nowhere); }},
             {"folder again", 58, [&] { files_.createFolder(folder_.path()); }},
             {"list", 76, [&] { static_cast<void>(files_.list(folder_ / "nowhere")); }},
             {"create folder", 75, [&] { static_cast<void>(files_.create(folder_.path())); }},
             {"read folder", 75, [&] { static_cast<void>(files_.read(folder_.path())); }},
             {"size folder", 75, [&] { static_cast<void>(files_.size(folder_.path())); }},
             {"remove folder", 75, [&] { files_.remove(folder_.path()); }}})
        EXPECT_EQ(errorOf(run), number) << statement;
}

}  // namespace

}  // namespace kalvo::testing
