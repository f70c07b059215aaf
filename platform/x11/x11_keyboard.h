// Synthetic keyboard input on an X server, through XTEST.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/shared/alt_keypad.h"
#include "platform/x11/clipboard_paste.h"
#include "platform/x11/composed_characters.h"
#include "platform/x11/held/left_down_keys.h"
#include "platform/x11/held/lock_state.h"
#include "platform/x11/held/user_modifiers.h"
#include "platform/x11/key_injector.h"
#include "platform/x11/key_records.h"
#include "platform/x11/keymap/spare_keycodes.h"
#include "platform/x11/keymap/x11_keymap.h"
#include "platform/x11/target/focused_application.h"
#include "platform/x11/target/target_pace.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_layout.h"

namespace kalvo {

// Types into the application that has the focus, with the active XKB map, so that the
// logic that types on Windows types here. Modifiers the user holds are out of the way
// during each injection and put back behind it. Injections go to the server in packets
// of a few hundred keys: one packet for each would cost more than the keys themselves.
// Everything pressed is released on destruction; characters that were given keys keep
// them. While the layout is held nobody else can change the key map. If the connection is
// lost, nothing is typed any more.
class X11Keyboard : public KeyboardInput, private AltKeypad::Sink {
public:
    static constexpr std::string_view kName = "XTEST (X11)";

    // Throws RuntimeError 5 when there is no display or it cannot be typed on.
    explicit X11Keyboard(const char* display = nullptr);
    ~X11Keyboard() override;
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    // Releases every key that is down, for a script that was broken off.
    void releaseAll();

    [[nodiscard]] KeyboardLayout& foregroundLayout() override;
    void useManners(const MannerOf& mannerOf) override { mannerOf_ = mannerOf; }
    void prepareFor(std::string_view script) override;
    [[nodiscard]] std::string takeUntyped() override;
    [[nodiscard]] bool awaitTarget(int milliseconds) override;
    void SendInput(std::span<const KeyRecord> records) override;
    [[nodiscard]] std::string_view name() const override { return kName; }
    [[nodiscard]] bool connected() override { return connection_.alive(); }
    void finishInput() override;
    void endTyping() override { pace_.rest(); }
    [[nodiscard]] bool holdLayout() override;
    [[nodiscard]] std::optional<std::string> clipboardText() override;
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;

private:
    using Clock = std::chrono::steady_clock;

    void passKey(const KeyRecord& record) override;
    void passComposed(char character) override;
    void takeManner();
    [[nodiscard]] bool modifierHeld() const;
    void paste();
    void pasteUnderWine(xkb_keycode_t v);
    void pressControl(xkb_keycode_t key);
    ClipboardPaste& clipboard();
    void startTyping();

    X11Connection connection_;
    LeftDownKeys leftDown_{connection_};
    X11Keymap keymap_;
    KeyInjector injector_{connection_};
    FocusedApplication target_{connection_};
    TargetPace pace_{connection_, keymap_, injector_, target_};
    SpareKeycodes spares_{connection_, keymap_, pace_};
    UserModifiers userModifiers_{connection_, keymap_, injector_};
    AltKeypad altKeypad_{*this};
    X11Layout layout_{keymap_, spares_};
    LockState locks_{connection_, keymap_, layout_, altKeypad_};
    KeyRecords records_{keymap_, layout_, injector_, locks_};
    ComposedCharacters composed_{keymap_, layout_, injector_, records_, locks_};
    Clock::time_point lastTyping_;
    MannerOf mannerOf_;
    TypingManner manner_;
    std::unique_ptr<ClipboardPaste> clipboard_;  // from the first use on
};

}  // namespace kalvo
