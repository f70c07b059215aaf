// The way to a portable terminal: its own library where one is installed, else ours.
#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/multidll.h"
#include "platform/profile_files.h"

namespace kalvo {

// Opens an installed Multidll library, or speaks Kermit over the serial port where
// there is none; RuntimeError 53 or 453 for one that cannot be used. What is given here
// must outlive the factory and the libraries it makes.
[[nodiscard]] MultidllFactory portableLink(FileSystem& files, ProfileFiles& profiles,
                                           std::string applicationFolder);

}  // namespace kalvo
