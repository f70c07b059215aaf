#include "platform/jet/jet_protection.h"

#include <array>
#include <bit>
#include <numeric>
#include <utility>

namespace kalvo {

namespace {

constexpr std::size_t kVeilStart = 0x18;
constexpr std::size_t kVeilSize = 128;
constexpr std::array<std::uint8_t, 4> kVeilKey = {0xC7, 0xDA, 0x39, 0x6B};
constexpr std::size_t kPageKey = 0x3E - kVeilStart;
constexpr std::size_t kPassword = 0x42 - kVeilStart;
constexpr std::size_t kCreation = 0x72 - kVeilStart;

// RC4; the same call veils and unveils.
std::string unveil(std::string_view veiled) {
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + kVeilKey[i % kVeilKey.size()]);
        std::swap(state[i], state[j]);
    }
    std::string clear;
    std::uint8_t i = 0;
    j = 0;
    for (const char byte : veiled) {
        j = static_cast<std::uint8_t>(j + state[++i]);
        std::swap(state[i], state[j]);
        clear.push_back(
            static_cast<char>(byte ^ state[static_cast<std::uint8_t>(state[i] + state[j])]));
    }
    return clear;
}

std::uint32_t passwordMask(JetBytes clear, JetVersion version) {
    if (version == JetVersion::kJet3) return 0;
    const auto day = std::bit_cast<double>(clear.number(kCreation, 8));
    return day >= 0 && day < 0x7FFFFFFF ? static_cast<std::uint32_t>(day) : 0;
}

bool hasPassword(JetBytes clear, JetVersion version) {
    const std::uint32_t mask = passwordMask(clear, version);
    const std::size_t size = version == JetVersion::kJet3 ? 20 : 40;
    for (std::size_t at = 0; at < size; at += 4)
        if (clear.u32(kPassword + at) != mask) return true;
    return false;
}

}  // namespace

JetProtection jetProtectionOf(JetBytes firstPage, JetVersion version) {
    const std::string unveiled = unveil(firstPage.part(kVeilStart, kVeilSize).text());
    const JetBytes clear{unveiled};
    if (clear.u32(kPageKey) != 0) return JetProtection::kEnciphered;
    return hasPassword(clear, version) ? JetProtection::kPassword : JetProtection::kNone;
}

}  // namespace kalvo
