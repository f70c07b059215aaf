#include "editor/keys/key_tables.h"

#include "keys/key_files.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

struct Entry {
    std::string label;
    std::string code;
};

Entry readEntry(ProfileFiles& profiles, std::string_view folder, std::string_view section,
                std::size_t index) {
    const std::string value = ReadIniValue(profiles, toucheIni(folder), section,
                                           withSignPosition(static_cast<std::int64_t>(index)));
    const std::size_t at = value.find('@');
    if (at == std::string::npos) return {value, ""};
    return {value.substr(0, at), value.substr(at + 1)};
}

std::vector<KeyBox> readTable(ProfileFiles& profiles, std::string_view folder,
                              std::string_view section, std::size_t count) {
    std::vector<KeyBox> boxes;
    for (std::size_t index = 0; index < count; ++index) {
        const Entry entry = readEntry(profiles, folder, section, index);
        boxes.push_back({entry.label, ReadIniValue(profiles, corresIni(folder), "Correspondance",
                                                   trimBlanks(entry.code))});
    }
    return boxes;
}

}  // namespace

std::string keyName(std::string_view entry) {
    const std::size_t open = entry.find('{');
    const std::size_t close = entry.find('}');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::string(entry.substr(0, entry.find('@')));
    return std::string(entry.substr(open + 1, close - open - 1));
}

KeyTables RemplirTouches(ProfileFiles& profiles, std::string_view applicationFolder) {
    return {readTable(profiles, applicationFolder, kParticularSection, kParticularKeys),
            readTable(profiles, applicationFolder, kSystemSection, kSystemKeys)};
}

void saveKeyLabels(ProfileFiles& profiles, std::string_view applicationFolder,
                   std::string_view section, const std::vector<std::string>& labels) {
    for (std::size_t index = 0; index < labels.size(); ++index) {
        const Entry entry = readEntry(profiles, applicationFolder, section, index);
        WriteIniValue(profiles, section, withSignPosition(static_cast<std::int64_t>(index)),
                      labels[index] + "@" + entry.code, toucheIni(applicationFolder));
    }
}

}  // namespace kalvo
