// A keyboard that types nothing and lists what it is asked to inject.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/keyboard_input.h"

namespace kalvo {

// Writes one line for each SendInput call, its records joined by "; ":
//   down vk=0010 sc=002A; down vk=0141 sc=001E
// Lock states behave as those of a real keyboard, so that a dry run shows the keys
// that switch them off and back on.
class EventListing : public KeyboardInput {
public:
    // `locks` names the locks that are on: C (CapsLock), N (NumLock), S (ScrollLock).
    // Lines are handed to `write` in large pieces.
    EventListing(KeyboardLayout& layout, std::string_view locks,
                 std::function<void(std::string_view)> write);

    // Hands over what is left.
    void finish();

    KeyboardLayout& foregroundLayout() override { return layout_; }
    void SendInput(std::span<const KeyRecord> records) override;
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    std::int16_t GetKeyState(int virtualKey) override;

private:
    KeyboardLayout& layout_;
    std::function<void(std::string_view)> write_;
    std::string pending_;
    std::array<std::uint8_t, 256> toggled_{};
};

}  // namespace kalvo
