// The password of the settings, and the question whether a terminal is erased.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/platform.h"
#include "text/ansi_text.h"

namespace kalvo {

inline constexpr std::string_view kLoginTitle = "Autorisation <-> Paramétrage"_ansi;
inline constexpr std::string_view kEraseQuestion =
    "Voulez-vous effacer les données du terminal ?"_ansi;
// ESC "1*" ESC CR LF: the terminal drops what it has delivered.
inline constexpr std::string_view kEraseCommand =
    "\x1B"
    "1*\x1B\r\n";

struct AccessLock {
    std::int16_t accessLevel = 0;  // 1: every tab
};

struct EraseQuestion {
    std::int16_t pending = 0;  // not 0: it waits for its answer
};

// Full access for the right password, a message for any other text; tries are
// not counted. True when access was given.
bool tryPassword(const Platform& platform, AccessLock& lock, std::string_view password);

// The answer to the erase question. RuntimeError 8018 when the port is closed:
// the question then stays pending.
void answerEraseQuestion(const Platform& platform, EraseQuestion& question, bool erase);

}  // namespace kalvo
