// What every binding of an interface has to do, whatever the system. The tests are
// parameterised by a factory, so that each system instantiates the same ones.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/profile_files.h"
#include "platform/registry.h"
#include "tests/support/temporary_folder.h"

namespace kalvo::testing {

// The factory gets a folder of the test's own to keep its data in.
template <typename Interface>
using BindingFactory = std::function<std::unique_ptr<Interface>(const TemporaryFolder&)>;

template <typename Interface>
class BindingContract : public ::testing::TestWithParam<BindingFactory<Interface>> {
protected:
    TemporaryFolder folder_;
    std::unique_ptr<Interface> binding_ = this->GetParam()(folder_);
};

class ProfileFilesContract : public BindingContract<ProfileFiles> {};
class RegistryContract : public BindingContract<Registry> {};
class FileSystemContract : public BindingContract<FileSystem> {};

}  // namespace kalvo::testing
