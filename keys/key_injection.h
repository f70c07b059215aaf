// The key-script sender: a script becomes synthetic input for the application that
// has the focus.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "keys/key_script.h"
#include "platform/event_pump.h"
#include "platform/keyboard_input.h"

namespace kalvo {

// The family of the operating system, which decides how a script is typed.
enum class OsFamily { k9x, kNt };

// Types key scripts. Lock keys are off while a script is typed and are put back
// afterwards, but for what the script itself does to them. Nothing is reported: a
// blocked injection types nothing.
class Keysend {
public:
    Keysend(KeyboardInput& keyboard, EventPump& events) : keyboard_(keyboard), events_(events) {}

    // Types a script. `wait` is 0 for every caller of today: on the 9x family it is
    // the platform sender's wait flag; on NT a value other than 0 adds a pause of
    // 20 ms, and the digits 2, 3, 4 in it leave CapsLock, NumLock, ScrollLock as the
    // script left them.
    void SendKeyScript(std::string_view script, std::int16_t wait);

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
    void typeEvents(KeyScriptReader& reader);
    void restoreLocks(const LockStates& initial, const LockTrackers& trackers, std::int16_t wait);
    void typeKey(Key key);
    void sendKey(Key key, std::uint32_t flags);

    KeyboardInput& keyboard_;
    EventPump& events_;
    std::uint32_t DownFlags = kKeyEventScanCode;
    std::uint32_t UpFlags = kKeyEventScanCode | kKeyEventKeyUp;
};

}  // namespace kalvo
