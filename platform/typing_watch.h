// What happens around the target while the program types.
#pragma once

#include <cstdint>

namespace kalvo {

// Why typing stops.
enum class TypingStop : std::uint8_t {
    kNone,
    kStopKey,           // the user pressed the stop key
    kOtherApplication,  // another application has come to the front
    kTargetGone,        // the window typed into is gone
    kKeyboardLost,      // nothing can be typed any more
    kProgramEnds,
};

// Looked at between keys. The bodies here are for a session that tells nothing.
class TypingWatch {
public:
    virtual ~TypingWatch() = default;

    // Typing begins: whoever has the focus now is the target.
    virtual void begin() {}
    // What has happened since.
    [[nodiscard]] virtual TypingStop look() { return TypingStop::kNone; }
};

// A watch that sees nothing.
[[nodiscard]] inline TypingWatch& unwatched() {
    static TypingWatch watch;
    return watch;
}

}  // namespace kalvo
