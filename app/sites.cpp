#include "app/sites.h"

#include <algorithm>
#include <string>

#include "settings/settings_store.h"

namespace kalvo {

namespace {

constexpr std::string_view kSection = "Sites";
constexpr std::size_t kMost = 100;

}  // namespace

std::vector<std::string> knownSites(ProfileFiles& profiles, std::string_view file) {
    std::vector<std::string> folders;
    while (folders.size() < kMost) {
        std::string folder =
            ReadIniValue(profiles, file, kSection, std::to_string(folders.size() + 1));
        if (folder.empty()) break;
        folders.push_back(std::move(folder));
    }
    return folders;
}

void rememberSite(ProfileFiles& profiles, std::string_view file, std::string_view folder) {
    const auto known = knownSites(profiles, file);
    if (known.size() < kMost && std::find(known.begin(), known.end(), folder) == known.end())
        WriteIniValue(profiles, kSection, std::to_string(known.size() + 1), folder, file);
}

}  // namespace kalvo
