// Synthetic keyboard input on an X server, through XTEST.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/keyboard_input.h"
#include "platform/x11/alt_keypad.h"
#include "platform/x11/key_injector.h"
#include "platform/x11/spare_keycodes.h"
#include "platform/x11/user_modifiers.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_keymap.h"

namespace kalvo {

// Types into the application that has the focus. Layout functions, virtual keys
// and scan codes follow the active XKB map, so that the logic that types on
// Windows types here:
// - the third level (AltGr) is what Control with Alt in a VkKeyScanExA result means;
//   Control and Alt sent for themselves stay what they are;
// - Alt with keypad digits types the composed character with its own key or, when
//   the layout has none, with a spare one; lock keys have no influence on it;
// - modifiers the user holds are out of the way during each batch of keys.
// Batches go to the server in packets of a few hundred keys: one packet for each would
// cost more than the keys themselves.
// Everything pressed is released and the key map put back on destruction. If the
// connection is lost, nothing is typed any more.
class X11Keyboard : public KeyboardInput, private KeyboardLayout, private AltKeypad::Sink {
public:
    // Throws RuntimeError 5 when there is no display or it cannot be typed on.
    explicit X11Keyboard(const char* display = nullptr);
    ~X11Keyboard() override;
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    // Releases every key that is down, for a script that was broken off.
    void releaseAll();

    // False once the X server has gone.
    [[nodiscard]] bool connected() const { return connection_.alive(); }

    [[nodiscard]] KeyboardLayout& foregroundLayout() override;
    void SendInput(std::span<const KeyRecord> records) override;
    void finishInput() override { connection_.flush(); }
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyA(std::uint16_t virtualKey) override;
    [[nodiscard]] std::uint8_t platformIdentifier() override { return 2; }
    [[nodiscard]] unsigned char CharToOemA(char character) override;
    // Throws RuntimeError 5: there is no such sender here.
    void SendKeys(std::string_view script, bool wait) override;
    // Lock bytes are 1 when on, bytes of keys that are down have bit 7.
    void GetKeyboardState(std::span<std::uint8_t, 256> state) override;
    // Toggles the locks that differ; other keys are left alone.
    void SetKeyboardState(std::span<const std::uint8_t, 256> state) override;

private:
    using Clock = std::chrono::steady_clock;

    std::int16_t VkKeyScanExA(char character) override;
    std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;
    void passKey(const KeyRecord& record) override;
    void passComposed(char character) override;

    void followKeymap();
    void startTyping();
    void feedBatch(std::span<const KeyRecord> records);
    void injectKey(xkb_keycode_t key, bool up, bool modifier);
    void tapStroke(KeyStroke stroke);
    [[nodiscard]] xkb_keycode_t keycodeOf(const KeyRecord& record);
    [[nodiscard]] xkb_keycode_t namedKeycode(std::uint8_t virtualKey);
    [[nodiscard]] std::optional<KeyStroke> strokeOf(char character);
    [[nodiscard]] xkb_mod_mask_t lockOf(int virtualKey) const;
    [[nodiscard]] bool capsLockOn();

    X11Connection connection_;
    X11Keymap keymap_;
    KeyInjector injector_{connection_};
    SpareKeycodes spares_{connection_, keymap_};
    UserModifiers userModifiers_{connection_, keymap_, injector_};
    AltKeypad altKeypad_{*this};
    std::array<xkb_keycode_t, 256> namedKeycodes_{};  // 0: not looked up yet
    Clock::time_point lastTyping_;
    // CapsLock was typed since its state was last asked for.
    bool capsLockTyped_ = false;
};

}  // namespace kalvo
