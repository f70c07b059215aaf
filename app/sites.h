// The sites of this user: the application folders a program has worked on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"

namespace kalvo {

// `file` is knownSitesFile(); folders are paths of the core.
void rememberSite(ProfileFiles& profiles, std::string_view file, std::string_view folder);
[[nodiscard]] std::vector<std::string> knownSites(ProfileFiles& profiles, std::string_view file);

}  // namespace kalvo
