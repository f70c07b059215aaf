// Texts of message boxes where there is one line only.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// The lines of a text, " | " between them; empty ones are left out.
[[nodiscard]] inline std::string onOneLine(std::string_view text) {
    std::string line;
    bool pendingBreak = false;
    for (const char c : text) {
        if (c == '\r' || c == '\n') {
            pendingBreak = !line.empty();
            continue;
        }
        if (pendingBreak) line += " | ";
        pendingBreak = false;
        line.push_back(c);
    }
    return line;
}

}  // namespace kalvo
