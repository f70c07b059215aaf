#include "keys/family_9x.h"

#include <array>

#include "text/resume_next.h"

namespace kalvo {

void sendByPlatform(KeyboardInput& keyboard, std::string_view script, std::int16_t wait) {
    resumeNext([&] { keyboard.SendKeys(script, wait != 0); });
}

void flipNumLockState(KeyboardInput& keyboard) {
    std::array<std::uint8_t, 256> state{};
    keyboard.GetKeyboardState(state);
    state[kVkNumLock] = state[kVkNumLock] == 0 ? 1 : 0;
    keyboard.SetKeyboardState(state);
}

}  // namespace kalvo
