#include "keys/script_tokens.h"

#include <algorithm>

#include "keys/lock_keys.h"
#include "settings/settings_store.h"
#include "text/field_text.h"

namespace kalvo {

TimerPieces::TimerPieces(std::string_view script)
    : rest_(script), remaining_(CountSeparators(script, kTimerToken) + 1) {}

std::string_view TimerPieces::next() {
    const std::size_t end = rest_.find(kTimerToken);
    const std::string_view piece = rest_.substr(0, end);
    rest_ =
        end == std::string_view::npos ? std::string_view{} : rest_.substr(end + kTimerToken.size());
    --remaining_;
    return piece;
}

// The first occurrence is removed as many times as the token occurs in the piece. Text
// that joins up to a token around a removed one counts as an occurrence, as it does when
// one looks for the first one again; a token cannot overlap itself, so one pass that
// watches the end of the output finds them in the same order.
TokenFreeText::TokenFreeText(std::string_view piece, std::string_view token)
    : tokenSize_(token.size()) {
    std::size_t remaining = CountSeparators(piece, token);
    text_.reserve(piece.size());
    for (std::size_t i = 0; i < piece.size(); ++i) {
        if (remaining == 0) {
            text_ += piece.substr(i);
            break;
        }
        text_.push_back(piece[i]);
        if (piece[i] == token.back() && text_.ends_with(token)) {
            text_.resize(text_.size() - token.size());
            cuts_.push_back(text_.size());
            --remaining;
        }
    }
}

std::size_t TokenFreeText::before(std::size_t position) const {
    const auto cuts = std::upper_bound(cuts_.begin(), cuts_.end(), position) - cuts_.begin();
    return position + static_cast<std::size_t>(cuts) * tokenSize_;
}

TokenFreeText pressNumLockTokens(KeyboardInput& keyboard, std::string_view piece) {
    const std::size_t presses = CountSeparators(piece, kNumLockToken);
    for (std::size_t i = 0; i < presses; ++i) InvertNumLock(keyboard);
    return {piece, kNumLockToken};
}

void switchCapsLockOffForTokens(KeyboardInput& keyboard, std::string_view piece) {
    const std::size_t tokens = CountSeparators(piece, kCapsLockToken);
    for (std::size_t i = 0; i < tokens; ++i) CapsLockOff(keyboard);
}

}  // namespace kalvo
