#include "settings/application_settings.h"

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "settings/application_paths.h"
#include "settings/manner_keys.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

std::string ignoredValue(std::string_view section, std::string_view key, std::string_view text) {
    return std::string("Applications.ini, section « "_ansi).append(section) +
           std::string(" », "_ansi).append(key) +
           std::string(" : valeur ignorée, "_ansi).append(text);
}

// Reads one application's keys from the sections that are about it.
class Manners {
public:
    Manners(ProfileFiles& profiles, const std::string& applicationFolder,
            std::function<void(std::string_view)> complain)
        : profiles_(profiles),
          file_(applicationsIni(applicationFolder)),
          complain_(std::move(complain)) {}

    TypingManner of(std::span<const std::string> names) {
        sections_.assign(names.begin(), names.end());
        sections_.emplace_back(kEveryApplication);
        TypingManner manner;
        if (const auto method = read(MannerKey::kMethod, methodIn)) manner.method = *method;
        if (const auto pause = readNumber(MannerKey::kKeyPause)) manner.keyPause = *pause;
        if (const auto pause = readNumber(MannerKey::kConfirmPause)) manner.confirmPause = *pause;
        if (const auto lead = readNumber(MannerKey::kLead)) manner.lead = *lead;
        if (const auto extended = readNumber(MannerKey::kExtended))
            manner.extendedKeys = *extended == 1;
        return manner;
    }

private:
    template <typename Convert>
    auto read(MannerKey key, const Convert& convert) -> decltype(convert(std::string_view())) {
        const std::string_view name = mannerKey(key).name;
        for (const std::string& section : sections_) {
            const std::string text = ReadIniValue(profiles_, file_, section, name);
            if (text.empty()) continue;
            if (const auto value = convert(text)) return value;
            complainOf(section, name, text);
        }
        return std::nullopt;
    }

    std::optional<int> readNumber(MannerKey key) {
        return read(key, [key](std::string_view text) { return numberIn(text, key); });
    }

    void complainOf(std::string_view section, std::string_view key, std::string_view text) {
        const std::string complaint = ignoredValue(section, key, text);
        if (complaints_.insert(complaint).second) complain_(complaint);
    }

    ProfileFiles& profiles_;
    std::string file_;
    std::function<void(std::string_view)> complain_;
    std::vector<std::string> sections_;
    std::set<std::string> complaints_;
};

}  // namespace

MannerOf applicationManners(ProfileFiles& profiles, std::string applicationFolder,
                            std::function<void(std::string_view)> complain) {
    return [manners = Manners(profiles, applicationFolder, std::move(complain))](
               std::span<const std::string> names) mutable { return manners.of(names); };
}

}  // namespace kalvo
