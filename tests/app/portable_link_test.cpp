#include "app/portable_link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "app/bindings/system_bindings.h"
#include "settings/application_paths.h"
#include "tests/support/temporary_folder.h"

namespace kalvo {
namespace {

using ::testing::HasSubstr;

// Whatever is wrong with a library, there is a way to the portable, which says what it is.
TEST(PortableLink, SpeaksKermitWhereThereIsNoLibraryToUse) {
    const testing::TemporaryFolder folder;
    const SystemBindings bindings = createSystemBindings(folder.path());
    const auto remark = [&] {
        return portableLink(*bindings.files, *bindings.profiles,
                            bindings.applicationFolder)([] { return false; })
            ->remark();
    };
    EXPECT_THAT(remark(), HasSubstr("Aucune"));
    bindings.profiles->write(portSerieIni(bindings.applicationFolder), "Portable", "Multidll",
                             "absente.dll");
    EXPECT_THAT(remark(), HasSubstr("absente.dll"));
    EXPECT_THAT(remark(), HasSubstr("Kermit"));
}

}  // namespace
}  // namespace kalvo
