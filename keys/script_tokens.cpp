#include "keys/script_tokens.h"

#include "keys/lock_keys.h"
#include "settings/settings_store.h"
#include "text/field_text.h"

namespace kalvo {

namespace {

// Removes the first occurrence of a token as many times as it occurs in the text.
// Text that joins up to a token around a removed one counts as an occurrence, as
// it does when one looks for the first one again; a token cannot overlap itself,
// so one pass that watches the end of the output finds them in the same order.
std::string withoutTokens(std::string_view text, std::string_view token) {
    std::size_t remaining = CountSeparators(text, token);
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (remaining == 0) {
            result += text.substr(i);
            break;
        }
        result.push_back(text[i]);
        if (text[i] == token.back() && result.ends_with(token)) {
            result.resize(result.size() - token.size());
            --remaining;
        }
    }
    return result;
}

}  // namespace

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

std::string pressNumLockTokens(KeyboardInput& keyboard, std::string_view piece) {
    const std::size_t presses = CountSeparators(piece, kNumLockToken);
    for (std::size_t i = 0; i < presses; ++i) InvertNumLock(keyboard);
    return withoutNumLockTokens(piece);
}

std::string withoutNumLockTokens(std::string_view piece) {
    return withoutTokens(piece, kNumLockToken);
}

void switchCapsLockOffForTokens(KeyboardInput& keyboard, std::string_view piece) {
    const std::size_t tokens = CountSeparators(piece, kCapsLockToken);
    for (std::size_t i = 0; i < tokens; ++i) CapsLockOff(keyboard);
}

std::string withoutCapsLockTokens(std::string_view piece) {
    return withoutTokens(piece, kCapsLockToken);
}

}  // namespace kalvo
