// The way to a portable terminal: its own library where one is installed, else ours.
#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/multidll.h"
#include "platform/profile_files.h"

namespace kalvo {

// Opens the Multidll library that is installed, or named in PortSerie.ini (section Portable,
// key Multidll); speaks Kermit over the serial port where there is none or it cannot be used,
// and says so in its remark. What is given here must outlive the factory and the libraries it
// makes.
[[nodiscard]] MultidllFactory portableLink(FileSystem& files, ProfileFiles& profiles,
                                           std::string applicationFolder);

}  // namespace kalvo
