// The bindings of the system that the tests run on, by the names they use.
#pragma once

#ifdef _WIN32
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_profile_files.h"
#include "platform/windows/windows_registry.h"
#else
#include "platform/linux/linux_file_system.h"
#include "platform/linux/settings/linux_profile_files.h"
#include "platform/linux/settings/registry_file.h"
#endif

namespace kalvo::testing {

#ifdef _WIN32
using SystemFiles = WindowsFileSystem;
using SystemProfiles = WindowsProfileFiles;
using SystemRegistry = WindowsRegistry;
#else
using SystemFiles = LinuxFileSystem;
using SystemProfiles = LinuxProfileFiles;
using SystemRegistry = RegistryFile;
#endif

}  // namespace kalvo::testing
