// Private-profile files by the system's own functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"

namespace kalvo {

// The system decides about the lines a write leaves alone: it may give them its own
// line ends, and takes the comments within a section along with it. Relative paths are relative to
// the current folder, not to the system's.
class WindowsProfileFiles : public ProfileFiles {
public:
    [[nodiscard]] std::string read(std::string_view file, std::string_view section,
                                   std::string_view key) override;
    bool write(std::string_view file, std::string_view section, std::string_view key,
               std::string_view value) override;
    [[nodiscard]] std::vector<std::string> sections(std::string_view file) override;
    bool removeSection(std::string_view file, std::string_view section) override;
};

}  // namespace kalvo
