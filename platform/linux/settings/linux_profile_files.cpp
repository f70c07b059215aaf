#include "platform/linux/settings/linux_profile_files.h"

#include <optional>
#include <utility>

#include "platform/linux/native_path.h"
#include "platform/linux/whole_file.h"
#include "text/profile_file_text.h"

namespace kalvo {

std::string LinuxProfileFiles::read(std::string_view file, std::string_view section,
                                    std::string_view key) {
    std::optional<std::string> content = readWholeFile(nativePath(file));
    if (!content) return {};
    return findProfileValue(std::move(*content), section, key).substr(0, kLongestProfileValue);
}

bool LinuxProfileFiles::write(std::string_view file, std::string_view section, std::string_view key,
                              std::string_view value) {
    return updateWholeFile(nativePath(file), [&](std::string content) {
        return std::optional(withProfileValue(std::move(content), section, key, value));
    });
}

std::vector<std::string> LinuxProfileFiles::sections(std::string_view file) {
    std::optional<std::string> content = readWholeFile(nativePath(file));
    return content ? profileSections(std::move(*content)) : std::vector<std::string>();
}

bool LinuxProfileFiles::removeSection(std::string_view file, std::string_view section) {
    return updateWholeFile(nativePath(file), [&](std::string content) {
        return std::optional(withoutProfileSection(std::move(content), section));
    });
}

}  // namespace kalvo
