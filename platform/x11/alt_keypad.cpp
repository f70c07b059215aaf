#include "platform/x11/alt_keypad.h"

#include "text/oem_text.h"

namespace kalvo {

namespace {

constexpr std::uint16_t kVkNumpad0 = 0x60;
constexpr std::uint16_t kVkNumpad9 = 0x69;

std::uint16_t keyOf(const KeyRecord& record) { return record.virtualKey & 0xFFU; }

bool isUp(const KeyRecord& record) { return (record.flags & kKeyEventKeyUp) != 0; }

bool isDigit(const KeyRecord& record) {
    return keyOf(record) >= kVkNumpad0 && keyOf(record) <= kVkNumpad9;
}

}  // namespace

void AltKeypad::feed(const KeyRecord& record) {
    if (alt_) {
        feedBehindAlt(record);
    } else if (keyOf(record) == kVkMenu && !isUp(record)) {
        alt_ = record;
    } else {
        sink_.passKey(record);
    }
}

void AltKeypad::feedBehindAlt(const KeyRecord& record) {
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

void AltKeypad::release() {
    sink_.passKey(*alt_);
    for (const KeyRecord& digit : digits_) sink_.passKey(digit);
    drop();
}

void AltKeypad::compose() {
    unsigned code = 0;
    std::optional<bool> ansi;
    for (const KeyRecord& digit : digits_) {
        if (isUp(digit)) continue;
        const unsigned value = keyOf(digit) - kVkNumpad0;
        if (!ansi) ansi = value == 0;
        code = (code * 10 + value) % 256;
    }
    drop();
    if (code == 0) return;
    const auto byte = static_cast<unsigned char>(code);
    sink_.passComposed(ansi.value_or(false) ? static_cast<char>(byte) : oemToAnsi(byte));
}

void AltKeypad::drop() {
    alt_.reset();
    digits_.clear();
}

}  // namespace kalvo
