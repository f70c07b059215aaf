#include "platform/linux/app_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/linux/settings/registry_file.h"
#include "tests/support/temporary_folder.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using testing::writeBytes;

// An environment variable for the time of a test.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        ::setenv(name, value.c_str(), 1);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { old_ ? ::setenv(name_, old_->c_str(), 1) : ::unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(ApplicationFolder, IsChosenInOrder) {
    for (const char* mark : {"PortSerie.ini", "Scen.mdb"}) {
        const TemporaryFolder bin;
        EXPECT_EQ(chooseApplicationFolder({}, bin.path(), "/user"), "/user");
        writeBytes(bin / mark, "");
        EXPECT_EQ(chooseApplicationFolder({}, bin.path(), "/user"), bin.path()) << mark;
        EXPECT_EQ(chooseApplicationFolder("/given/", bin.path(), "/user"), "/given");
        EXPECT_EQ(chooseApplicationFolder("a/../b", bin.path(), "/user"),
                  (fs::current_path() / "b").string());
    }
    EXPECT_EQ(chooseApplicationFolder("/", "", "/user"), "/");
}

TEST(ApplicationFolder, IsCreatedAndNamedInTheCodePage) {
    const TemporaryFolder folder;
    EXPECT_EQ(applicationFolder(folder / "été/stock"), folder.path() + "/\xE9t\xE9/stock");
    EXPECT_TRUE(fs::is_directory(folder / "été/stock"));

    const Variable home("XDG_DATA_HOME", folder / "share");
    EXPECT_EQ(applicationFolder({}), folder / "share/kalvo-horizon");
    EXPECT_TRUE(fs::is_directory(folder / "share/kalvo-horizon"));

    EXPECT_THROW(static_cast<void>(applicationFolder(folder / "łódź")), RuntimeError);
    EXPECT_FALSE(fs::exists(folder / "łódź"));
    writeBytes(folder / "file", "");
    EXPECT_THROW(static_cast<void>(applicationFolder(folder / "file")), RuntimeError);
    EXPECT_THROW(static_cast<void>(applicationFolder(folder / "file/x")), RuntimeError);
}

TEST(UserFolders, IgnoreRelativeVariables) {
    const Variable home("HOME", "/users/u");
    const Variable config("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(defaultRegistryFile(), "/users/u/.config/kalvo-horizon/registre.reg");
    const Variable absolute("XDG_CONFIG_HOME", "/etc/u");
    EXPECT_EQ(defaultRegistryFile(), "/etc/u/kalvo-horizon/registre.reg");
}

}  // namespace
}  // namespace kalvo
