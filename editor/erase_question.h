// The question whether a terminal may forget what it has delivered.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/platform.h"
#include "text/ansi_text.h"

namespace kalvo {

inline constexpr std::string_view kEraseQuestion =
    "Voulez-vous effacer les données du terminal ?"_ansi;

struct EraseQuestion {
    std::int16_t pending = 0;  // not 0: it waits for its answer
};

// The answer to the erase question. RuntimeError 8018 when the port is closed:
// the question then stays pending.
void answerEraseQuestion(const Platform& platform, EraseQuestion& question, bool erase);

}  // namespace kalvo
