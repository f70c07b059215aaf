#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "tests/bindings/binding_contracts.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

int errorOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

TEST_P(FileSystemContract, CreatesReplacesAppendsAndRemoves) {
    const std::string file = folder_ / "lot.txt";
    EXPECT_FALSE(binding_->fileExists(file));
    const auto stream = binding_->create(file);
    stream->write("A\r\n");
    stream->write(std::string("\0\xE9", 2));
    stream->close();
    binding_->append(file)->write("B");  // closed by its end
    EXPECT_EQ(binding_->read(file), std::string("A\r\n\0\xE9"
                                                "B",
                                                6));
    EXPECT_EQ(binding_->size(file), 6U);

    binding_->create(file)->close();
    EXPECT_EQ(binding_->read(file), "") << "create empties what was there";
    EXPECT_TRUE(binding_->fileExists(file));
    binding_->remove(file);
    EXPECT_FALSE(binding_->fileExists(file));
    binding_->append(file)->close();
    EXPECT_TRUE(binding_->fileExists(file)) << "append creates";
}

TEST_P(FileSystemContract, KeepsLargeContentsWhole) {
    const std::string file = folder_ / "large.txt";
    std::string content;
    for (int i = 0; content.size() < 1000000; ++i) content += std::to_string(i) + "\r\n";
    const auto stream = binding_->create(file);
    for (std::size_t at = 0; at < content.size(); at += 777)
        stream->write(std::string_view(content).substr(at, 777));
    stream->close();
    EXPECT_TRUE(binding_->read(file) == content);
    std::string joined;
    binding_->readLines(file, [&](std::string_view line) { (joined += line) += "\r\n"; });
    EXPECT_TRUE(joined == content) << "lines across blocks";
}

TEST_P(FileSystemContract, ReadsInPiecesAndRenamesInPlaceOfAFile) {
    const std::string from = folder_ / "lot.part";
    const std::string to = folder_ / "lot.txt";
    writeBytes(from, std::string("ab\0\r\n\xE9z", 7));
    writeBytes(to, "old");
    binding_->rename(from, to);
    EXPECT_FALSE(binding_->fileExists(from));
    std::array<char, 3> piece{};
    std::string joined;
    const auto source = binding_->open(to);
    while (const std::size_t got = source->read(piece)) joined.append(piece.data(), got);
    EXPECT_EQ(joined, std::string("ab\0\r\n\xE9z", 7));
}

TEST_P(FileSystemContract, HandsOverLinesWithoutTheirEnds) {
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
        binding_->readLines(file, [&](std::string_view line) { lines.emplace_back(line); });
        EXPECT_TRUE(lines == expected) << content.substr(0, 20) << " gave " << lines.size();
    }
}

TEST_P(FileSystemContract, TellsFilesFromFolders) {
    const std::string inner = folder_ / "Scenarios";
    binding_->createFolder(inner);
    binding_->create(folder_ / "lot.txt")->close();
    EXPECT_TRUE(binding_->folderExists(inner));
    EXPECT_FALSE(binding_->fileExists(inner));
    EXPECT_FALSE(binding_->folderExists(folder_ / "lot.txt"));
    EXPECT_THAT(binding_->list(folder_.path()), UnorderedElementsAre("Scenarios", "lot.txt"));
    EXPECT_THAT(binding_->list(inner), IsEmpty());

    const std::string accented = inner + kPathSeparator + std::string("réf€.ini"_ansi);
    binding_->create(accented)->close();
    EXPECT_TRUE(binding_->fileExists(accented));
    EXPECT_THAT(binding_->list(inner), ElementsAre("réf€.ini"_ansi));
}

TEST_P(FileSystemContract, FailuresHaveTheirNumbers) {
    const std::string missing = folder_ / "missing.txt";
    const std::string nowhere = (folder_ / "nowhere") + kPathSeparator + "a.txt";
    const auto lines = [](std::string_view) {};
    struct Case {
        const char* statement;
        int number;
        std::function<void()> run;
    };
    for (const auto& [statement, number, run] : std::vector<Case>{
             {"read", 53, [&] { static_cast<void>(binding_->read(missing)); }},
             {"open", 53, [&] { static_cast<void>(binding_->open(missing)); }},
             {"open folder", 75, [&] { static_cast<void>(binding_->open(folder_.path())); }},
             {"rename", 53, [&] { binding_->rename(missing, folder_ / "a.txt"); }},
             {"read below", 76, [&] { static_cast<void>(binding_->read(nowhere)); }},
             {"lines", 53, [&] { binding_->readLines(missing, lines); }},
             {"size", 53, [&] { static_cast<void>(binding_->size(missing)); }},
             {"remove", 53, [&] { binding_->remove(missing); }},
             {"create below", 76, [&] { static_cast<void>(binding_->create(nowhere)); }},
             {"append below", 76, [&] { static_cast<void>(binding_->append(nowhere)); }},
             {"folder below", 76, [&] { binding_->createFolder(nowhere); }},
             {"folder again", 58, [&] { binding_->createFolder(folder_.path()); }},
             {"list", 76, [&] { static_cast<void>(binding_->list(folder_ / "nowhere")); }},
             {"create folder", 75, [&] { static_cast<void>(binding_->create(folder_.path())); }},
             {"read folder", 75, [&] { static_cast<void>(binding_->read(folder_.path())); }},
             {"size folder", 75, [&] { static_cast<void>(binding_->size(folder_.path())); }},
             {"remove folder", 75, [&] { binding_->remove(folder_.path()); }}})
        EXPECT_EQ(errorOf(run), number) << statement;
}

}  // namespace

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FileSystemContract);

}  // namespace kalvo::testing
