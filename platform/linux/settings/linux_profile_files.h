// Private-profile files without Windows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"

namespace kalvo {

// Rules of the content: profile_file_text.h. Every read goes to the file; a write
// replaces it atomically and waits for the writes of other processes. Folders are
// not created. Paths: native_path.h.
class LinuxProfileFiles : public ProfileFiles {
public:
    [[nodiscard]] std::string read(std::string_view file, std::string_view section,
                                   std::string_view key) override;
    bool write(std::string_view file, std::string_view section, std::string_view key,
               std::string_view value) override;
    [[nodiscard]] std::vector<std::string> sections(std::string_view file) override;
    bool removeSection(std::string_view file, std::string_view section) override;
};

}  // namespace kalvo
