// The key-script sender: a script becomes synthetic input for the application that
// has the focus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "keys/key_script.h"
#include "platform/event_pump.h"
#include "platform/keyboard_input.h"
#include "platform/typing_watch.h"

namespace kalvo {

// The family of the operating system, which decides how a script is typed.
enum class OsFamily { k9x, kNt };

// How far a script was typed.
struct Typing {
    std::size_t typed = 0;  // characters from its beginning, whole
    TypingStop stop = TypingStop::kNone;
    // Of a script that was stopped: it goes on with `lead` and what is behind `resumeAt`.
    std::size_t resumeAt = 0;
    std::string lead;
    // The characters that could not be typed, each once, as far as the session tells.
    std::string untyped;
};

// What a sender tells while it types; positions are in characters of the script.
struct TypingNews {
    std::function<void(std::size_t typed)> progress;
    // The user pressed keys of his own: what stands there may not be what was typed.
    std::function<void(std::size_t typed)> disturbed;
};

// Types key scripts. Lock keys are off while a script is typed and are put back
// afterwards, but for what the script itself does to them. Between keys it glances
// around every 64 of them; behind each Enter and Tab, every 512 keys and every 10 ms it waits
// until they have been taken and looks whether to stop: then every modifier comes up, the locks are
// put back, and the rest of the script is left. While the user holds a key of his own down, or
// nobody has the focus, it waits.
class Keysend {
public:
    Keysend(KeyboardInput& keyboard, EventPump& events, TypingWatch& watch = unwatched(),
            TypingNews news = {})
        : keyboard_(keyboard), events_(events), watch_(watch), news_(std::move(news)) {}

    // Types a script. `wait` is 0 for every caller of today: on the 9x family it is
    // the platform sender's wait flag; on NT a value other than 0 adds a pause of
    // 20 ms, and the digits 2, 3, 4 in it leave CapsLock, NumLock, ScrollLock as the
    // script left them.
    Typing SendKeyScript(std::string_view script, std::int16_t wait);

    // The events of one key, in one injection each. The layout is asked for afresh
    // each time, so that typing follows the focus. A key of code 0 sends nothing.
    void SendKeyDown(Key key);
    void SendKeyUp(Key key);

    // Inverts NumLock.
    void FlipNumLock();

    [[nodiscard]] OsFamily GetOsFamily();

    // A pause that delivers events.
    void WaitWithEvents(std::int16_t milliseconds);

private:
    struct LockStates {
        bool capsLock = false;
        bool numLock = false;
        bool scrollLock = false;
    };

    void chooseFlags(OsFamily family);
    LockStates switchLocksOff();
    Typing typeEvents(KeyScriptReader& reader);
    [[nodiscard]] bool timeToLook();
    [[nodiscard]] TypingStop look(std::size_t typed);
    [[nodiscard]] TypingStop lookOnce();
    void restoreLocks(const LockStates& initial, const LockTrackers& trackers, std::int16_t wait);
    void typeKey(Key key);
    void sendKey(Key key, std::uint32_t flags);

    KeyboardInput& keyboard_;
    EventPump& events_;
    TypingWatch& watch_;
    TypingNews news_;
    int keysSinceLook_ = 0;
    bool lookDue_ = false;
    std::uint32_t lastLook_ = 0;
    std::uint32_t lastAnswer_ = 0;
    std::uint32_t DownFlags = kKeyEventScanCode;
    std::uint32_t UpFlags = kKeyEventScanCode | kKeyEventKeyUp;
};

}  // namespace kalvo
