// Alone in its file: the kernel's terminal structures clash with those of the C
// library's <termios.h>.
#include <asm/termbits.h>
#include <sys/ioctl.h>

#include "platform/asio/custom_speed.h"

namespace kalvo {

bool setCustomSpeed(int descriptor, std::uint32_t speed) noexcept {
    termios2 state{};
    if (ioctl(descriptor, TCGETS2, &state) != 0) return false;
    state.c_cflag &= ~static_cast<tcflag_t>(CBAUD | (CBAUD << IBSHIFT));
    state.c_cflag |= BOTHER | (BOTHER << IBSHIFT);
    state.c_ispeed = speed;
    state.c_ospeed = speed;
    return ioctl(descriptor, TCSETS2, &state) == 0;
}

std::uint32_t actualSpeed(int descriptor) noexcept {
    termios2 state{};
    return ioctl(descriptor, TCGETS2, &state) == 0 ? state.c_ospeed : 0;
}

}  // namespace kalvo
