#include "settings/manner_keys.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr int kLongestPause = 10'000;
constexpr int kFarthestLead = 1'000'000;

constexpr std::array<MannerKeyInfo, kMannerKeys> kKeys = {
    {{MannerKey::kMethod, "Methode", 0, 0},
     {MannerKey::kKeyPause, "PauseTouche", 0, kLongestPause},
     {MannerKey::kConfirmPause, "PauseValidation", 0, kLongestPause},
     {MannerKey::kLead, "Avance", 1, kFarthestLead},
     {MannerKey::kExtended, "Etendues", 0, 1}}};

// By TypingMethod.
constexpr auto kMethods = std::to_array<MethodName>({{"touches", TypingMethod::kKeys},
                                                     {"pave", TypingMethod::kKeypad},
                                                     {"presse-papiers", TypingMethod::kClipboard},
                                                     {"unicode", TypingMethod::kUnicode}});

}  // namespace

const MannerKeyInfo& mannerKey(MannerKey key) { return kKeys.at(static_cast<std::size_t>(key)); }

std::span<const MethodName> allMethods() { return kMethods; }

std::optional<TypingMethod> methodIn(std::string_view text) {
    for (const MethodName& known : kMethods)
        if (equalIgnoringCase(known.name, text)) return known.method;
    return std::nullopt;
}

std::optional<int> numberIn(std::string_view text, MannerKey key) {
    const MannerKeyInfo& info = mannerKey(key);
    std::optional<int> number;
    resumeNext([&] {
        const std::int32_t value = requiredIntegerPart(text);
        if (value >= info.lowest && value <= info.highest) number = value;
    });
    return number;
}

bool meansSomething(std::string_view text, MannerKey key) {
    return key == MannerKey::kMethod ? methodIn(text).has_value() : numberIn(text, key).has_value();
}

std::string textOf(const TypingManner& manner, MannerKey key) {
    const auto number = [](int value) { return value == 0 ? "" : std::to_string(value); };
    switch (key) {
        case MannerKey::kMethod:
            if (manner.method == TypingMethod::kKeys) return {};
            return std::string(kMethods.at(static_cast<std::size_t>(manner.method)).name);
        case MannerKey::kKeyPause: return number(manner.keyPause);
        case MannerKey::kConfirmPause: return number(manner.confirmPause);
        case MannerKey::kLead: return number(manner.lead);
        case MannerKey::kExtended: break;
    }
    return manner.extendedKeys ? "1" : "";
}

}  // namespace kalvo
