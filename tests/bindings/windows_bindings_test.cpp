// The contracts, on the bindings of this system.
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_profile_files.h"
#include "platform/windows/windows_registry.h"
#include "tests/bindings/binding_contracts.h"

namespace kalvo::testing {

const auto kOnWindows = [](const auto&) { return std::string("Windows"); };

INSTANTIATE_TEST_SUITE_P(Bindings, ProfileFilesContract,
                         ::testing::Values([](const TemporaryFolder&) {
                             return std::make_unique<WindowsProfileFiles>();
                         }),
                         kOnWindows);
INSTANTIATE_TEST_SUITE_P(Bindings, RegistryContract, ::testing::Values([](const TemporaryFolder&) {
                             return std::make_unique<WindowsRegistry>();
                         }),
                         kOnWindows);
INSTANTIATE_TEST_SUITE_P(Bindings, FileSystemContract,
                         ::testing::Values([](const TemporaryFolder&) {
                             return std::make_unique<WindowsFileSystem>();
                         }),
                         kOnWindows);

}  // namespace kalvo::testing
