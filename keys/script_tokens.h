// The tokens that callers of the sender handle themselves: the timer split and the
// lock keys.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

// Cuts the {NUMLOCK} tokens out of a piece and presses NumLock once for each.
[[nodiscard]] std::string pressNumLockTokens(KeyboardInput& keyboard, std::string_view piece);

// The piece without its {NUMLOCK} tokens.
[[nodiscard]] std::string withoutNumLockTokens(std::string_view piece);

// Switches CapsLock off, if it is on, once for each {CAPSLOCK} token.
void switchCapsLockOffForTokens(KeyboardInput& keyboard, std::string_view piece);

// The piece without its {CAPSLOCK} tokens.
[[nodiscard]] std::string withoutCapsLockTokens(std::string_view piece);

}  // namespace kalvo
