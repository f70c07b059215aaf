// Synthetic keyboard input, key state and keyboard layouts, as user32 has them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/typing_manner.h"
#include "platform/typing_watch.h"
#include "text/ansi_text.h"
#include "text/oem_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// Flags of a key event (KEYEVENTF_...).
inline constexpr std::uint32_t kKeyEventExtendedKey = 1;
inline constexpr std::uint32_t kKeyEventKeyUp = 2;
inline constexpr std::uint32_t kKeyEventScanCode = 8;

// Virtual keys that more than one file needs.
inline constexpr std::uint16_t kVkShift = 0x10;
inline constexpr std::uint16_t kVkControl = 0x11;
inline constexpr std::uint16_t kVkMenu = 0x12;
inline constexpr std::uint16_t kVkCapital = 0x14;
inline constexpr std::uint16_t kVkNumLock = 0x90;
inline constexpr std::uint16_t kVkScroll = 0x91;

// Shift-state bits of a VkKeyScanExA result.
inline constexpr std::uint16_t kNeedsShift = 0x100;
inline constexpr std::uint16_t kNeedsControl = 0x200;
inline constexpr std::uint16_t kNeedsAlt = 0x400;
inline constexpr std::uint16_t kNeedsAltGr = kNeedsControl | kNeedsAlt;

// The variable part of a keyboard INPUT record; type, time and extra information
// are always 1, 0 and 0. With kKeyEventScanCode set the scan code counts and the
// virtual key may carry the shift-state byte of VkKeyScanExA.
struct KeyRecord {
    std::uint16_t virtualKey = 0;
    std::uint16_t scanCode = 0;
    std::uint32_t flags = 0;

    friend bool operator==(const KeyRecord&, const KeyRecord&) = default;
};

// What a character or a key is in one keyboard layout.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    // The virtual key (low byte) and the shift state (high byte, kNeeds...) that
    // type the character, a code page 1252 byte. -1 when the layout cannot.
    // Control characters: TAB, CR, BS, ESC are their keys; LF is Control+Enter;
    // other codes 1 to 26 are Control+letter.
    [[nodiscard]] virtual std::int16_t VkKeyScanExA(char character) = 0;

    // The scan code (set 1, without the E0/E1 prefix) of a virtual key; 0 when it
    // has none. This is mapping type 0.
    [[nodiscard]] virtual std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) = 0;
};

// The keyboard of the session. Used from the program's own thread only.
// A failing injection types nothing; obstacle() tells of it.
class KeyboardInput {
public:
    virtual ~KeyboardInput() = default;

    // The layout in force for the application that has the focus now
    // (GetForegroundWindow, GetWindowThreadProcessId, GetKeyboardLayout). The
    // reference is valid until the next call. Cheap: it is called for every key.
    [[nodiscard]] virtual KeyboardLayout& foregroundLayout() = 0;

    // Who knows how an application wants to be typed into; asked for each script.
    virtual void useManners(const MannerOf& /*mannerOf*/) {}

    // Several sites may share a session: a batch is typed by whoever has the keyboard's turn.
    // False while another has it. Ends with giveTurnBack() or the process.
    [[nodiscard]] virtual bool takeTurn() { return true; }
    virtual void giveTurnBack() {}

    // A script is about to be typed into the application that has the focus, in its
    // manner: a binding that has to make keys for the characters makes them now.
    virtual void prepareFor(std::string_view /*script*/) {}

    // What the windows of the application that the last script went to are called; empty where
    // the session does not tell.
    [[nodiscard]] virtual std::string target() const { return {}; }

    // The script is done. The characters, each once, that could not be typed since the
    // last call.
    [[nodiscard]] virtual std::string takeUntyped() { return {}; }

    // Waits, at most that long, when the application is further behind than it may be. False
    // when there was a reason to wait: much may have happened meanwhile, and there may be one
    // still. Asked between keys, so it must be cheap when there is none.
    [[nodiscard]] virtual bool awaitTarget(int /*milliseconds*/) { return true; }

    // Injects the records in order, as one uninterrupted batch. A binding may gather
    // batches for a moment; nothing is reordered.
    virtual void SendInput(std::span<const KeyRecord> records) = 0;

    // What users know it by, French; empty where there is only one.
    [[nodiscard]] virtual std::string_view name() const { return {}; }

    // What the user has to know of it now, French sentences; empty for nothing.
    [[nodiscard]] virtual std::string_view remark() const { return {}; }

    // Asks the user's leave to type, where the session wants that and he is not being asked
    // or has agreed. Returns at once; obstacle() is kLeaveAwaited until he has answered.
    virtual void requestLeave() {}

    // Whether a connection that is lost is looked after here: nobody else has to make another.
    [[nodiscard]] virtual bool reconnects() const { return false; }

    // Whether keys reach anybody: false without a session, and once it has gone.
    [[nodiscard]] virtual bool connected() { return true; }

    // What keeps keys from the application in front, kNone when nothing does. kKeysRefused
    // stays until the next prepareFor(). Asked between keys, so it must be cheap.
    [[nodiscard]] virtual TypingStop obstacle() {
        return connected() ? TypingStop::kNone : TypingStop::kKeyboardLost;
    }

    // Everything injected so far has been taken by the session when this returns. Called
    // at the end of whatever is typed, and now and then while it is typed.
    virtual void finishInput() {}

    // A script has come to its end: nothing more is asked of the application.
    virtual void endTyping() {}

    // Until the next finishInput() the layout stays what it is now, where the session can
    // promise that: nobody else may be able to do anything meanwhile, so it follows within
    // milliseconds. False, and nothing is held, when the focus is not where it was at the
    // last finishInput().
    [[nodiscard]] virtual bool holdLayout() { return true; }

    // The text on the clipboard; nothing when there is none or it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> clipboardText() { return std::nullopt; }

    // Injects one event of a virtual key.
    virtual void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode,
                             std::uint32_t flags) = 0;

    // Bit 0: toggled on; negative: held down. Everything injected before counts.
    [[nodiscard]] virtual std::int16_t GetKeyState(int virtualKey) = 0;

    // The scan code of a virtual key in the program's own layout, mapping type 0.
    [[nodiscard]] virtual std::uint16_t MapVirtualKeyA(std::uint16_t virtualKey) {
        return foregroundLayout().MapVirtualKeyExA(virtualKey);
    }

    // The low byte of GetVersionExA's platform identifier: 1 on the 9x family.
    [[nodiscard]] virtual std::uint8_t platformIdentifier() { return 2; }

    // The OEM code of an ANSI character (CharToOemA); that of our own code page where the
    // system has none.
    [[nodiscard]] virtual unsigned char CharToOemA(char character) { return ansiToOem(character); }

    // The rest is asked for on the 9x family only.
    //
    // The platform's own key-script sender. Throws RuntimeError 5 where the system has
    // none.
    virtual void SendKeys(std::string_view /*script*/, bool /*wait*/) {
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Argument ou appel de procédure incorrect"_ansi));
    }
    // The thread's 256 key-state bytes.
    virtual void GetKeyboardState(std::span<std::uint8_t, 256> /*state*/) {}
    virtual void SetKeyboardState(std::span<const std::uint8_t, 256> /*state*/) {}
};

}  // namespace kalvo
