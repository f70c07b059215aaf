// Alt with digits of the numeric keypad composes a character by its code.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/keyboard_input.h"
#include "text/oem_text.h"

namespace kalvo {

// Recognises the sequence Alt down, keypad digits, Alt up in a stream of key
// records. Alt is held back until the record behind it shows what it is for;
// whatever turns out to be no such sequence is passed on as it came.
class AltKeypad {
public:
    static constexpr std::uint16_t kVkNumpad0 = 0x60;
    static constexpr std::uint16_t kVkNumpad9 = 0x69;

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

    void feed(const KeyRecord& record) {
        if (alt_)
            feedBehindAlt(record);
        else if (keyOf(record) == kVkMenu && !isUp(record))
            alt_ = record;
        else
            sink_.passKey(record);
    }

    // Forgets what is held back.
    void drop() {
        alt_.reset();
        digits_.clear();
    }

    // True while an Alt key is down that the sink has not seen.
    [[nodiscard]] bool holdsAlt() const { return alt_.has_value(); }

private:
    static std::uint16_t keyOf(const KeyRecord& record) { return record.virtualKey & 0xFFU; }
    static bool isUp(const KeyRecord& record) { return (record.flags & kKeyEventKeyUp) != 0; }
    static bool isDigit(const KeyRecord& record) {
        return keyOf(record) >= kVkNumpad0 && keyOf(record) <= kVkNumpad9;
    }

    void feedBehindAlt(const KeyRecord& record) {
        const bool altUp = keyOf(record) == kVkMenu && isUp(record);
        if (isDigit(record)) {
            digits_.push_back(record);
        } else if (altUp && !digits_.empty()) {
            compose();
        } else if (keyOf(record) != kVkMenu || altUp) {
            release();
            sink_.passKey(record);
        }
    }

    void release() {
        sink_.passKey(*alt_);
        for (const KeyRecord& digit : digits_) sink_.passKey(digit);
        drop();
    }

    void compose() {
        unsigned code = 0;
        std::optional<bool> ansi;
        for (const KeyRecord& digit : digits_) {
            if (isUp(digit)) continue;
            const unsigned value = keyOf(digit) - unsigned{kVkNumpad0};
            if (!ansi) ansi = value == 0;
            code = (code * 10 + value) % 256;
        }
        drop();
        if (code == 0) return;
        const auto byte = static_cast<unsigned char>(code);
        sink_.passComposed(ansi.value_or(false) ? static_cast<char>(byte) : oemToAnsi(byte));
    }

    Sink& sink_;
    std::optional<KeyRecord> alt_;
    std::vector<KeyRecord> digits_;  // down and up, in case they have to be passed on
};

}  // namespace kalvo
