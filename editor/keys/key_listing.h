// What a key script stands for, in words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// As many rows as a window shows.
inline constexpr std::size_t kMostKeysShown = 500;

// The keys a script types, in order, as a user would name them: "Texte : ABC",
// "Ctrl + Maj + F5", "Tab x 3", "Pause de 500 ms". `timerPause` is in milliseconds.
// At most `limit` rows (kMostKeysShown in windows); a last row then says that there is more.
[[nodiscard]] std::vector<std::string> listKeys(std::string_view script, int timerPause,
                                                std::size_t limit);

}  // namespace kalvo
