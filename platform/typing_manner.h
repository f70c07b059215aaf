// How an application wants to be typed into.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace kalvo {

enum class TypingMethod : std::uint8_t {
    kKeys,       // keys; characters without a key get one, where the session can
    kKeypad,     // characters of code 128 and above as Alt with their code on the keypad
    kClipboard,  // text is pasted, everything else are keys
    kUnicode,    // characters as such, where the session knows that; otherwise as kKeys
};

struct TypingManner {
    TypingMethod method = TypingMethod::kKeys;
    int keyPause = 0;      // milliseconds behind each press and each release
    int confirmPause = 0;  // milliseconds more behind Enter, Tab and function keys
    int lead = 0;          // keys that typing may be ahead; 0 leaves it to the binding
    bool extendedKeys = false;

    friend bool operator==(const TypingManner&, const TypingManner&) = default;
};

// The manner of an application by its names, the one that counts most first. All names
// are code page 1252.
using MannerOf = std::function<TypingManner(std::span<const std::string> names)>;

}  // namespace kalvo
