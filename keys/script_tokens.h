// The tokens that callers of the sender handle themselves: the timer split and the
// lock keys.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/keyboard_input.h"

namespace kalvo {

inline constexpr std::string_view kTimerToken = "{TIMER}";
inline constexpr std::string_view kNumLockToken = "{NUMLOCK}";
inline constexpr std::string_view kCapsLockToken = "{CAPSLOCK}";

// The pieces of a script between its {TIMER} tokens, in order, the one behind the
// last token included, so that there is always one more piece than there are
// tokens. The text must outlive the splitter.
class TimerPieces {
public:
    explicit TimerPieces(std::string_view script);

    // Pieces not yet taken.
    [[nodiscard]] std::size_t remaining() const { return remaining_; }
    // The next piece; call only while some remain.
    std::string_view next();

private:
    std::string_view rest_;
    std::size_t remaining_;
};

// A piece of a script without tokens, which still knows where its characters stood.
class TokenFreeText {
public:
    // Cuts every occurrence of a token out of a piece.
    TokenFreeText(std::string_view piece, std::string_view token);

    [[nodiscard]] const std::string& text() const { return text_; }
    // Where in the piece the characters before `position` of the text end.
    [[nodiscard]] std::size_t before(std::size_t position) const;

private:
    std::string text_;
    std::vector<std::size_t> cuts_;  // positions in the text, ascending
    std::size_t tokenSize_;
};

// Cuts the {NUMLOCK} tokens out of a piece and presses NumLock once for each.
[[nodiscard]] TokenFreeText pressNumLockTokens(KeyboardInput& keyboard, std::string_view piece);

// Switches CapsLock off, if it is on, once for each {CAPSLOCK} token.
void switchCapsLockOffForTokens(KeyboardInput& keyboard, std::string_view piece);

}  // namespace kalvo
