#include "settings/options.h"

#include <gtest/gtest.h>

#include "settings/application_paths.h"
#include "tests/support/fake_profile_files.h"

namespace kalvo {
namespace {

TEST(Options, AreReadEachTimeAndFallBackToTheirStandard) {
    testing::FakeProfileFiles profiles;
    const auto store = [&](std::string_view key, std::string_view value) {
        profiles.write(optionsIni("/app"), "Options", key, value);
    };
    for (const OptionInfo& info : allOptions()) {
        EXPECT_EQ(optionValue(profiles, "/app", info.option), info.standard) << info.key;
        EXPECT_EQ(info.advisable, info.standard == 0) << info.key;
        for (const char* nothing : {"", "oui", "1x"}) {
            store(info.key, nothing);
            EXPECT_EQ(optionValue(profiles, "/app", info.option), info.standard) << info.key;
        }
        store(info.key, " 7");
        EXPECT_EQ(optionValue(profiles, "/app", info.option), 7) << info.key;
        EXPECT_TRUE(setOption(profiles, "/app", info.option, 0));
        EXPECT_FALSE(optionSet(profiles, "/app", info.option)) << info.key;
    }
}

}  // namespace
}  // namespace kalvo
