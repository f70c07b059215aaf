// Applications.ini: how each application wants to be typed into.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/profile_files.h"
#include "platform/typing_manner.h"

namespace kalvo {

// The manners of the file in an application folder, read at each use. A section is the
// name of an application, "*" stands for all; a key that is missing or empty in one counts
// as the next one has it. `complain` hears, once for each, of values that mean nothing;
// they count as missing. `profiles` must outlive the answer.
[[nodiscard]] MannerOf applicationManners(ProfileFiles& profiles, std::string applicationFolder,
                                          std::function<void(std::string_view)> complain);

}  // namespace kalvo
