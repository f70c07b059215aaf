// Whether keys of this program reach anybody in a Windows session.
#pragma once

#include <cstdint>

namespace kalvo {

// Asked again and again, so what is costly to find out is kept for a moment.
class SessionAccess {
public:
    // False while the session is locked, shows a prompt of the system, or is disconnected.
    [[nodiscard]] bool open();

    // Whether the process of the window in front ranks above ours: the system then drops our
    // keys without a word. One that may not be looked at counts as such.
    [[nodiscard]] bool targetAboveUs();

private:
    std::uint32_t lastLook_ = 0;
    bool looked_ = false;
    bool open_ = true;
    unsigned long process_ = 0;  // that was in front
    bool above_ = false;
};

}  // namespace kalvo
