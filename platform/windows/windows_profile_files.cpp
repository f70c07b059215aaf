#include "platform/windows/windows_profile_files.h"

#include <windows.h>

#include <array>
#include <cstddef>

#include "platform/windows/windows_file_system.h"
#include "text/profile_file_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr DWORD kBufferSize = 2055;
constexpr std::size_t kFirstNamesSize = 4096;

// The functions look for a name without a folder in the system's own folder. Empty
// when there is no such path.
std::string absolutePath(std::string_view file) {
    const std::string name(file);
    std::string path(GetFullPathNameA(name.c_str(), 0, nullptr, nullptr), '\0');
    const auto size = static_cast<DWORD>(path.size());
    path.resize(GetFullPathNameA(name.c_str(), size, path.data(), nullptr));
    return path;
}

}  // namespace

std::string WindowsProfileFiles::read(std::string_view file, std::string_view section,
                                      std::string_view key) {
    const std::string path = absolutePath(file);
    if (path.empty()) return {};
    std::array<char, kBufferSize> buffer{};
    const DWORD count =
        GetPrivateProfileStringA(std::string(section).c_str(), std::string(key).c_str(), "",
                                 buffer.data(), kBufferSize, path.c_str());
    return {buffer.data(), count};
}

bool WindowsProfileFiles::write(std::string_view file, std::string_view section,
                                std::string_view key, std::string_view value) {
    const std::string path = absolutePath(file);
    return !path.empty() &&
           WritePrivateProfileStringA(std::string(section).c_str(), std::string(key).c_str(),
                                      std::string(value).c_str(), path.c_str()) != 0;
}

std::vector<std::string> WindowsProfileFiles::sections(std::string_view file) {
    const std::string path = absolutePath(file);
    if (path.empty()) return {};
    // Names, each ended by NUL; all but two bytes of the room are used when it is too small.
    std::string names(kFirstNamesSize, '\0');
    const auto fill = [&] {
        return GetPrivateProfileSectionNamesA(names.data(), static_cast<DWORD>(names.size()),
                                              path.c_str());
    };
    std::size_t used = fill();
    for (; used + 2 >= names.size(); used = fill()) names.resize(2 * names.size());
    std::vector<std::string> all;
    for (std::size_t at = 0; at < used; at += all.back().size() + 1)
        all.emplace_back(names.c_str() + at);
    return all;
}

// The system's own function would take the comments on the next section along.
bool WindowsProfileFiles::removeSection(std::string_view file, std::string_view section) {
    WindowsFileSystem files;
    if (!files.fileExists(file) && !files.folderExists(file)) return true;
    return resumeNext(
        [&] { files.replace(file, withoutProfileSection(files.read(file), section)); });
}

}  // namespace kalvo
