#include "settings/application_settings.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::string_view kEveryApplication = "*";
constexpr int kLongestPause = 10'000;
constexpr int kFarthestLead = 1'000'000;

constexpr auto kMethods = std::to_array<std::pair<std::string_view, TypingMethod>>(
    {{"touches", TypingMethod::kKeys},
     {"pave", TypingMethod::kKeypad},
     {"presse-papiers", TypingMethod::kClipboard},
     {"unicode", TypingMethod::kUnicode}});

std::optional<TypingMethod> methodOf(std::string_view name) {
    for (const auto& [known, method] : kMethods)
        if (equalIgnoringCase(known, name)) return method;
    return std::nullopt;
}

std::optional<int> numberOf(std::string_view text, int lowest, int highest) {
    std::optional<int> number;
    resumeNext([&] {
        const std::int32_t value = requiredIntegerPart(text);
        if (value >= lowest && value <= highest) number = value;
    });
    return number;
}

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
        if (const auto method = read("Methode", methodOf)) manner.method = *method;
        if (const auto pause = readNumber("PauseTouche", 0, kLongestPause))
            manner.keyPause = *pause;
        if (const auto pause = readNumber("PauseValidation", 0, kLongestPause))
            manner.confirmPause = *pause;
        if (const auto lead = readNumber("Avance", 1, kFarthestLead)) manner.lead = *lead;
        if (const auto extended = readNumber("Etendues", 0, 1))
            manner.extendedKeys = *extended == 1;
        return manner;
    }

private:
    template <typename Convert>
    auto read(std::string_view key, const Convert& convert)
        -> decltype(convert(std::string_view())) {
        for (const std::string& section : sections_) {
            const std::string text = ReadIniValue(profiles_, file_, section, key);
            if (text.empty()) continue;
            if (const auto value = convert(text)) return value;
            complainOf(section, key, text);
        }
        return std::nullopt;
    }

    std::optional<int> readNumber(std::string_view key, int lowest, int highest) {
        return read(key, [&](std::string_view text) { return numberOf(text, lowest, highest); });
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
