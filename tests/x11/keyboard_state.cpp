#include "tests/x11/keyboard_state.h"

#include <X11/XKBlib.h>

#include <algorithm>
#include <array>

namespace kalvo::testing {

KeyboardState::KeyboardState(const char* display) : display_(XOpenDisplay(display)) {}

KeyboardState::~KeyboardState() { XCloseDisplay(display_); }

void KeyboardState::lock(unsigned locks) const {
    XkbLockModifiers(display_, XkbUseCoreKbd, kCapsLock | kNumLock, locks);
    XSync(display_, False);
}

void KeyboardState::lockGroup(unsigned group) const {
    XkbLockGroup(display_, XkbUseCoreKbd, group);
    XSync(display_, False);
}

unsigned KeyboardState::locks() const {
    XkbStateRec state;
    XkbGetState(display_, XkbUseCoreKbd, &state);
    return state.locked_mods;
}

bool KeyboardState::anyKeyDown() const {
    std::array<char, 32> keys{};
    XQueryKeymap(display_, keys.data());
    return std::any_of(keys.begin(), keys.end(), [](char byte) { return byte != 0; });
}

std::uint8_t KeyboardState::keycode(unsigned long keysym) const {
    return XKeysymToKeycode(display_, keysym);
}

}  // namespace kalvo::testing
