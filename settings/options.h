// Options.ini: how the program differs from what sites are used to, where their
// integrator wants it to.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/profile_files.h"

namespace kalvo {

enum class Option {
    // Off for every site, and advisable for a new one.
    kBuiltText,      // TexteConstruit
    kWholeReplay,    // RejeuComplet
    kPartialFrame,   // TramePartielle
    kStartPoint,     // PointDepart
    kLiteralFields,  // ChampsLitteraux
    kEmptyBuffer,    // TamponVide
    // What the program does for the safety of its data.
    kJournal,           // Journal
    kJournalDays,       // JournalJours
    kJournalMegabytes,  // JournalMo
    kTargetGuard,       // GardeApplication
    kStopKey,           // ToucheArret
    kNotifications,     // Notifications
    kEraseAfterSuccess  // EffacerApresSucces
};

// An option as users meet it. Texts are code page 1252.
struct OptionInfo {
    Option option;
    std::string_view key;       // in section "Options" of Options.ini
    std::int32_t standard = 0;  // when missing, empty or no number
    bool advisable = false;     // 1 is what "Réglages conseillés" sets
    std::string_view sentence;  // what 1 does, or what the number means, in one sentence
    bool number = false;        // counts something, below 1 without limit; others are switches
};

// All of them, in the order in which they are shown.
[[nodiscard]] std::span<const OptionInfo> allOptions();
[[nodiscard]] const OptionInfo& optionInfo(Option option);

// The value in force; read from the file each time.
[[nodiscard]] std::int32_t optionValue(ProfileFiles& profiles, std::string_view applicationFolder,
                                       Option option);
// Whether a switch is on: its value is not 0.
[[nodiscard]] bool optionSet(ProfileFiles& profiles, std::string_view applicationFolder,
                             Option option);
// Sets a value; false when the file cannot be written.
bool setOption(ProfileFiles& profiles, std::string_view applicationFolder, Option option,
               std::int32_t value);

}  // namespace kalvo
