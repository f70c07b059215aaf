// The contracts, on the bindings of this system.
#include "platform/linux/linux_file_system.h"
#include "platform/linux/settings/linux_profile_files.h"
#include "platform/linux/settings/registry_file.h"
#include "tests/bindings/binding_contracts.h"

namespace kalvo::testing {

const auto kOnLinux = [](const auto&) { return std::string("Linux"); };

INSTANTIATE_TEST_SUITE_P(Bindings, ProfileFilesContract,
                         ::testing::Values([](const TemporaryFolder&) {
                             return std::make_unique<LinuxProfileFiles>();
                         }),
                         kOnLinux);
INSTANTIATE_TEST_SUITE_P(Bindings, RegistryContract,
                         ::testing::Values([](const TemporaryFolder& folder) {
                             return std::make_unique<RegistryFile>(folder / "conf/a/registre.reg");
                         }),
                         kOnLinux);
INSTANTIATE_TEST_SUITE_P(Bindings, FileSystemContract,
                         ::testing::Values([](const TemporaryFolder&) {
                             return std::make_unique<LinuxFileSystem>();
                         }),
                         kOnLinux);

}  // namespace kalvo::testing
