// What happens around the target while the program types.
#pragma once

#include <cstdint>

namespace kalvo {

// Why typing stops.
enum class TypingStop : std::uint8_t {
    kNone,
    kStopKey,           // the user pressed the stop key
    kUserStop,          // the user stopped it in a window of ours
    kOtherApplication,  // another application has come to the front
    kTargetGone,        // the window typed into is gone
    kNoTarget,          // no application had the focus when typing began
    kKeyboardLost,      // nothing can be typed any more
    kLeaveAwaited,      // the user has not yet agreed that we type
    kLeaveRefused,      // he does not want it
    kLeaveWithdrawn,    // the desktop has ended what he had agreed to
    kSessionLocked,     // the session shows something else than its applications
    kKeysRefused,       // the system has not taken every key of this script
    kTargetRefuses,     // the application in front takes no keys from programs like ours
    kProgramEnds,
};

// What a site wants watched.
struct WatchRules {
    bool stopKey = true;      // the stop key stops typing
    bool targetGuard = true;  // typing stays with the application it began in
};

// Looked at between keys. The bodies here are for a session that tells nothing.
class TypingWatch {
public:
    virtual ~TypingWatch() = default;

    // Typing begins: whoever has the focus now is the target, and keys the user holds now
    // do not count until they are up.
    virtual void begin() {}
    // Whether something has come in that look() should see. Asks nobody.
    [[nodiscard]] virtual bool glance() { return false; }
    // What has happened since.
    [[nodiscard]] virtual TypingStop look() { return TypingStop::kNone; }

    // What keeps typing waiting, as of the last look().
    enum class Hold : std::uint8_t {
        kNone,
        kUserKey,    // a key of the user's own is down, or was since the look before
        kFocusMoves  // nobody has the focus for the moment
    };
    [[nodiscard]] virtual Hold hold() { return Hold::kNone; }

    // Whether it sees anything: false without a session.
    [[nodiscard]] virtual bool connected() { return true; }

    // Whether the application typed into last has the focus now.
    [[nodiscard]] virtual bool targetInFront() { return false; }
};

// A watch that sees nothing.
[[nodiscard]] inline TypingWatch& unwatched() {
    static TypingWatch watch;
    return watch;
}

}  // namespace kalvo
