// Alt with digits of the numeric keypad composes a character by its code.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/keyboard_input.h"

namespace kalvo {

// Recognises the sequence Alt down, keypad digits, Alt up in a stream of key
// records. Alt is held back until the record behind it shows what it is for;
// whatever turns out to be no such sequence is passed on as it came.
class AltKeypad {
public:
    // Where the stream goes on.
    class Sink {
    public:
        virtual ~Sink() = default;
        virtual void passKey(const KeyRecord& record) = 0;
        // A composed character. Codes are of the OEM code page modulo 256; with a
        // leading zero, of the ANSI code page. Code 0 composes nothing.
        virtual void passComposed(char character) = 0;
    };

    explicit AltKeypad(Sink& sink) : sink_(sink) {}

    void feed(const KeyRecord& record);

    // Forgets what is held back.
    void drop();

    // True while an Alt key is down that the sink has not seen.
    [[nodiscard]] bool holdsAlt() const { return alt_.has_value(); }

private:
    void feedBehindAlt(const KeyRecord& record);
    void release();
    void compose();

    Sink& sink_;
    std::optional<KeyRecord> alt_;
    std::vector<KeyRecord> digits_;  // down and up, in case they have to be passed on
};

}  // namespace kalvo
