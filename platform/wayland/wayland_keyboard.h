// Synthetic keyboard input in a Wayland session, through a virtual keyboard.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/shared/alt_keypad.h"
#include "platform/wayland/key_sender.h"
#include "platform/wayland/target_backlog.h"
#include "platform/wayland/toplevel_windows.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/wayland/wayland_keymap.h"
#include "platform/wayland/wayland_layout.h"

namespace kalvo {

// Types into the application that has the focus, on a keyboard with a key map of its own:
// what the user's keyboard holds down, locks, or has for a layout makes no difference, and
// what this one locks stays its own. Of an application's manner the pauses count, where the
// compositor says which application it is. Everything pressed is released on destruction. If the
// connection is lost, nothing is typed any more.
class WaylandKeyboard : public KeyboardInput, private AltKeypad::Sink {
public:
    // Whether the session has a compositor that lets its clients be keyboards.
    [[nodiscard]] static bool available();

    // Throws RuntimeError 5 when the session has no compositor or that no virtual keyboard.
    WaylandKeyboard();
    ~WaylandKeyboard() override;
    WaylandKeyboard(const WaylandKeyboard&) = delete;
    WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

    [[nodiscard]] KeyboardLayout& foregroundLayout() override { return layout_; }
    void useManners(const MannerOf& mannerOf) override { mannerOf_ = mannerOf; }
    void prepareFor(std::string_view script) override;
    [[nodiscard]] bool awaitTarget(int milliseconds) override;
    void SendInput(std::span<const KeyRecord> records) override;
    [[nodiscard]] std::string_view name() const override { return "clavier virtuel (Wayland)"; }
    [[nodiscard]] bool connected() override { return connection_.alive(); }
    void finishInput() override { connection_.sync(); }
    void endTyping() override { backlog_.rest(); }
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;

private:
    using Clock = std::chrono::steady_clock;

    void passKey(const KeyRecord& record) override;
    void passComposed(char character) override;
    void inject(xkb_keycode_t key, bool up, bool modifier);

    WaylandConnection connection_;
    WaylandKeymap map_;
    WaylandLayout layout_{map_};
    KeySender keys_{connection_, map_};
    TargetBacklog backlog_{connection_, keys_};
    AltKeypad altKeypad_{*this};
    Clock::time_point lastTyping_;
    MannerOf mannerOf_;
    TypingManner manner_;
    std::unique_ptr<ToplevelWindows> windows_;  // where the compositor shows them
};

}  // namespace kalvo
