#include "keys/key_files.h"

#include <utility>

#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

KeyCorrespondence readEntry(ProfileFiles& profiles, std::string_view folder,
                            std::string_view section, std::size_t entry) {
    const std::string value = ReadIniValue(profiles, toucheIni(folder), section,
                                           withSignPosition(static_cast<std::int64_t>(entry)));
    KeyCorrespondence key;
    const std::size_t at = value.find('@');
    if (at == std::string::npos) return key;
    resumeNext([&] {
        const std::int16_t code = toInteger16(value.substr(at + 1));
        key.KeyText =
            ReadIniValue(profiles, corresIni(folder), "Correspondance", withSignPosition(code));
        key.KeyLabel = value.substr(0, at);
    });
    return key;
}

}  // namespace

void KeyCorrespondenceTable::LoadKeyCorrespondence(ProfileFiles& profiles,
                                                   std::string_view applicationFolder) {
    std::size_t position = 0;
    const auto load = [&](std::string_view section, std::size_t entries) {
        for (std::size_t i = 0; i < entries; ++i)
            entries_[position++] = readEntry(profiles, applicationFolder, section, i);
    };
    load(kParticularSection, kParticularKeys);
    load(kSystemSection, kSystemKeys);
}

std::string_view KeyCorrespondenceTable::textOf(std::string_view label) const {
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry)
        if (entry->KeyLabel == label) return entry->KeyText;
    return {};
}

}  // namespace kalvo
