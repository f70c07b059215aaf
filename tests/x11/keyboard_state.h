// The state of a server's keyboard, seen and changed by a second client.
#pragma once

#include <cstdint>

struct _XDisplay;

namespace kalvo::testing {

// Locked modifiers.
inline constexpr unsigned kCapsLock = 1U << 1U;
inline constexpr unsigned kNumLock = 1U << 4U;

class KeyboardState {
public:
    explicit KeyboardState(const char* display);
    KeyboardState(const KeyboardState&) = delete;
    KeyboardState& operator=(const KeyboardState&) = delete;
    ~KeyboardState();

    void lock(unsigned locks) const;
    void lockGroup(unsigned group) const;
    [[nodiscard]] unsigned locks() const;
    [[nodiscard]] bool anyKeyDown() const;
    // Moves a key of the keyboard that hands would type on.
    void moveRealKey(std::uint8_t keycode, bool down) const;
    // The key that has a keysym.
    [[nodiscard]] std::uint8_t keycode(unsigned long keysym) const;

private:
    _XDisplay* display_;
};

}  // namespace kalvo::testing
