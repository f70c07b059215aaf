// The key definition files: Touche.ini (labels and codes), Corres.ini (key scripts
// by code) and TouFic.ini (entries for file-type scenarios).
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/profile_files.h"

namespace kalvo {

inline constexpr std::size_t kParticularKeys = 15;
inline constexpr std::size_t kSystemKeys = 23;
inline constexpr std::size_t kFileEntries = 33;

inline constexpr std::string_view kParticularSection = "Particuliere";
inline constexpr std::string_view kSystemSection = "systeme";
inline constexpr std::string_view kFileSection = "Touches";

// A key a scenario can press: its label as written before "@", braces included,
// and the key script it types (empty when its code has none).
struct KeyCorrespondence {
    std::string KeyLabel;
    std::string KeyText;
};

// Particular keys 0 to 14, then system keys 0 to 22.
class KeyCorrespondenceTable {
public:
    static constexpr std::size_t kEntries = kParticularKeys + kSystemKeys;

    // Reads the key files of the application folder and replaces every entry.
    // What is missing reads as the empty text; a value without "@" or with a code
    // that is not a number gives an entry without label, which nothing matches.
    void LoadKeyCorrespondence(ProfileFiles& profiles, std::string_view applicationFolder);

    // The script of a label; with equal labels the last entry counts. Empty when
    // the label is unknown.
    [[nodiscard]] std::string_view textOf(std::string_view label) const;

    [[nodiscard]] const std::array<KeyCorrespondence, kEntries>& entries() const {
        return entries_;
    }

private:
    std::array<KeyCorrespondence, kEntries> entries_;
};

}  // namespace kalvo
