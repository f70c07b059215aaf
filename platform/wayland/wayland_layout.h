// What characters and keys are on our own keyboard in a Wayland session.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <optional>

#include "platform/keyboard_input.h"
#include "platform/wayland/wayland_keymap.h"
#include "platform/x11/layout/xkb_layout.h"

namespace kalvo {

class WaylandLayout : public KeyboardLayout {
public:
    // The key and the kNeeds... bits that type a character.
    struct Stroke {
        xkb_keycode_t keycode;
        std::uint16_t shiftState;
    };

    explicit WaylandLayout(const WaylandKeymap& map);

    std::int16_t VkKeyScanExA(char character) override;
    std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;

    // The keycode of a record's key; 0 for none.
    [[nodiscard]] xkb_keycode_t keycodeOf(const KeyRecord& record);
    // The stroke that types a character as text; nothing for what is none.
    [[nodiscard]] std::optional<Stroke> strokeOf(char character);

private:
    void placeExtraKeys(const WaylandKeymap& map);
    void placeNamedKeys(const WaylandKeymap& map);

    XkbLayout usual_;
    std::array<std::int16_t, 256> extraCharacters_;   // VkKeyScanExA's answers, or -1
    std::array<xkb_keycode_t, 256> extraKeycodes_{};  // by virtual key
    std::array<xkb_keycode_t, 256> namedKeycodes_{};  // by virtual key
};

}  // namespace kalvo
