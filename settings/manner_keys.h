// The keys of an entry of Applications.ini.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/typing_manner.h"

namespace kalvo {

// The section that stands for all applications.
inline constexpr std::string_view kEveryApplication = "*";

enum class MannerKey : std::uint8_t { kMethod, kKeyPause, kConfirmPause, kLead, kExtended };
inline constexpr int kMannerKeys = 5;

struct MannerKeyInfo {
    MannerKey key;
    std::string_view name;  // in the file
    int lowest;             // of the numbers; those of the method mean nothing
    int highest;
};

// By MannerKey.
[[nodiscard]] const MannerKeyInfo& mannerKey(MannerKey key);

struct MethodName {
    std::string_view name;  // in the file
    TypingMethod method;
};
[[nodiscard]] std::span<const MethodName> allMethods();

// What a text in the file means; nothing when it means nothing.
[[nodiscard]] std::optional<TypingMethod> methodIn(std::string_view text);
[[nodiscard]] std::optional<int> numberIn(std::string_view text, MannerKey key);
[[nodiscard]] bool meansSomething(std::string_view text, MannerKey key);

// What the file says of a manner at a key; empty for what it would be without.
[[nodiscard]] std::string textOf(const TypingManner& manner, MannerKey key);

}  // namespace kalvo
