// Characters of a script that are typed as text rather than by their keys.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "platform/keyboard_input.h"
#include "text/ansi_text.h"

namespace kalvo {

// What a layout passes as text instead of a key comes back as a record of the virtual key
// kVkPacket, the character's code in its scan code, and gathers here until a key ends the run.
class PassedText {
public:
    static constexpr std::uint8_t kVkPacket = 0xE7;

    // Whether text is passed.
    void pass(bool on) { passing_ = on; }

    // Whether a character is: control characters are keys all the same. Then the answer of the
    // layout is kVkPacket, and its scan code code().
    [[nodiscard]] bool passes(char character) {
        constexpr char kDelete = '\x7F';
        if (!passing_ || ansiToUnicode(character) < ' ' || character == kDelete) return false;
        passed_ = character;
        return true;
    }
    [[nodiscard]] std::uint16_t code() const { return static_cast<unsigned char>(passed_); }

    // Takes a record that is text; whether it was.
    bool take(const KeyRecord& record) {
        if ((record.virtualKey & 0xFFU) != kVkPacket) return false;
        if ((record.flags & kKeyEventKeyUp) == 0) add(static_cast<char>(record.scanCode));
        return true;
    }
    void add(char character) { run_ += character; }

    // Whether a key ends the run. Locks around a composed character do not part it from the
    // text.
    [[nodiscard]] static bool endedBy(const KeyRecord& record) {
        const unsigned key = record.virtualKey & 0xFFU;
        return key != kVkNumLock && key != kVkCapital && key != kVkScroll;
    }
    [[nodiscard]] std::string takeRun() { return std::exchange(run_, {}); }

private:
    bool passing_ = false;
    char passed_ = '\0';
    std::string run_;
};

}  // namespace kalvo
