// The password of the settings.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/platform.h"
#include "text/ansi_text.h"

namespace kalvo {

inline constexpr std::string_view kLoginTitle = "Autorisation <-> Paramétrage"_ansi;

struct AccessLock {
    std::int16_t accessLevel = 0;  // 1: every tab
};

// Full access for the right password, a message for any other text; tries are
// not counted. True when access was given.
bool tryPassword(const Platform& platform, AccessLock& lock, std::string_view password);

}  // namespace kalvo
