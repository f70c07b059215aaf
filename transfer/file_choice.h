// Where a file dialog starts that has no folder of its own.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// The folder "\TEMP" of the drive of the application folder; the system's temporary
// folder where there are no drives.
[[nodiscard]] std::string temporaryFolder(std::string_view applicationFolder);

}  // namespace kalvo
