// The application folder and what must be in it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/program_folders.h"

namespace kalvo {

// The folder the program keeps its files in, as a path of the core (code page 1252)
// without a separator at its end: `appDir`, as the command line gave it, when there is
// one; else the executable's folder when it holds PortSerie.ini or Scen.mdb; else the
// user's. Always absolute, created with its parents when missing. RuntimeError 75 when
// it cannot be created or is no folder, 76 when the code page cannot hold its path.
[[nodiscard]] std::string applicationFolder(const ProgramFolders& folders,
                                            const std::optional<std::string>& appDir);

// The folder of the shipped key files, likewise; empty when there is none.
[[nodiscard]] std::string shippedDataFolder(const ProgramFolders& folders);

// Makes a folder ready for use: creates what is missing of the key files, of the serial
// settings, of the scenario database and of the scenarios folder. A Jet
// database of an upgraded site is brought in, and the user is told so. Files that
// are there are never changed. RuntimeError when something cannot be created.
void prepareApplicationFolder(FileSystem& files, Dialogs& dialogs, std::string_view folder,
                              std::string_view shippedData);

}  // namespace kalvo
