// The names scenarios may have, and the files they name.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace kalvo {

// Why no compiled file can have that name, in French; empty when one can. A name never
// leads out of the scenarios folder.
[[nodiscard]] std::string refusalOfName(std::string_view name);

// The compiled file of a scenario. Names of scenarios ignore case, names of files do
// so on some systems only: a file that differs in nothing else is the one.
[[nodiscard]] std::string findScenarioFile(FileSystem& files, std::string_view applicationFolder,
                                           std::string_view name);

// Removes the compiled file of a scenario, where there is one; a name that is refused has
// none.
void removeScenarioFile(FileSystem& files, std::string_view applicationFolder,
                        std::string_view name);

}  // namespace kalvo
