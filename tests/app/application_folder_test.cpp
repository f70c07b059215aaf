#include "app/application_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/temporary_folder.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using testing::writeBytes;

struct ApplicationFolder : ::testing::Test {
    std::string chosen(const std::optional<std::string>& appDir) {
        return applicationFolder({bin.path(), user / "data", {}}, appDir);
    }
    static std::string preferred(const std::string& path) {
        return fs::path(path).make_preferred().string();
    }

    TemporaryFolder bin;
    TemporaryFolder user;
};

TEST_F(ApplicationFolder, IsTheFirstOfThoseThatCanBeMeant) {
    EXPECT_EQ(chosen({}), preferred(user / "data"));
    EXPECT_TRUE(fs::is_directory(user / "data"));
    for (const char* mark : {"PortSerie.ini", "Scen.mdb"}) {
        writeBytes(bin / mark, "");
        EXPECT_EQ(chosen({}), preferred(bin.path())) << mark;
        EXPECT_EQ(chosen(user / "given/"), preferred(user / "given"));
        fs::remove(bin / mark);
    }
    EXPECT_EQ(chosen("/"), fs::current_path().root_path().string());
    const fs::path before = fs::current_path();
    fs::current_path(user.path());
    EXPECT_EQ(chosen("a/../b"), (fs::current_path() / "b").string());
    fs::current_path(before);
}

TEST_F(ApplicationFolder, IsCreatedAndNamedInTheCodePage) {
    EXPECT_TRUE(chosen(user.path() + "/été/stock").ends_with("t\xE9" + preferred("/stock")));
    EXPECT_TRUE(fs::is_directory(fs::path(user.path()) / u8"été/stock"));
    EXPECT_THROW(chosen(user.path() + "/łódź"), RuntimeError);
    EXPECT_FALSE(fs::exists(fs::path(user.path()) / u8"łódź"));
    writeBytes(user / "file", "");
    EXPECT_THROW(chosen(user / "file"), RuntimeError);
    EXPECT_THROW(chosen(user / "file/x"), RuntimeError);
}

}  // namespace
}  // namespace kalvo
