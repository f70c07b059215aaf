// The application folder and what must be in it.
#pragma once

#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/file_system.h"

namespace kalvo {

// Makes a folder ready for use: creates what is missing of the key files, of the serial
// settings, of the scenario database and of the scenarios folder. A Jet
// database of an upgraded site is brought in, and the user is told so. Files that
// are there are never changed. RuntimeError when something cannot be created.
void prepareApplicationFolder(FileSystem& files, Dialogs& dialogs, std::string_view folder,
                              std::string_view shippedData);

}  // namespace kalvo
