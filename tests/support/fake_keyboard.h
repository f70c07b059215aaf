// A keyboard that types nothing: it writes down what it was asked for, keeps lock
// states as a real one would, and has a US layout of letters, digits and a few signs.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/keyboard_input.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

class FakeKeyboard : public KeyboardInput, public KeyboardLayout {
public:
    // The records of each SendInput call.
    std::vector<std::vector<KeyRecord>> batches;
    // Every keybd_event: virtual key and flags in hex ("90 01").
    std::vector<std::string> keybdEvents;
    std::vector<std::string> sentToPlatform;
    std::uint8_t platform = 2;
    bool platformSenderFails = false;
    int layoutQueries = 0;
    bool plugged = true;
    TypingStop problem = TypingStop::kNone;  // of the application in front
    int takes = -1;                          // how many batches more; -1 for any
    int othersTurns = 0;                     // how often it is still another's turn
    bool taken = false;
    int leavesAsked = 0;
    std::string application;

    bool connected() override { return plugged; }
    [[nodiscard]] std::string target() const override { return application; }
    void requestLeave() override { ++leavesAsked; }
    TypingStop obstacle() override {
        if (takes == 0) return TypingStop::kKeysRefused;
        return plugged ? problem : TypingStop::kKeyboardLost;
    }
    bool takeTurn() override { return taken = othersTurns-- <= 0; }
    void giveTurnBack() override { taken = false; }

    void setLock(int virtualKey, bool on) { state_.at(static_cast<std::size_t>(virtualKey)) = on; }
    // What the keys pressed since the last call say: letters and digits, ">" for Tab, "!" for
    // Enter, "^" for CapsLock.
    std::string typed() {
        std::string text;
        for (const auto& batch : std::exchange(batches, {})) {
            const KeyRecord& key = batch.back();
            if ((key.flags & kKeyEventKeyUp) != 0) continue;
            const auto code = static_cast<char>(key.virtualKey & 0xFFU);
            if (code == '\t') text += '>';
            if (code == '\r') text += '!';
            if (key.virtualKey == kVkCapital) text += '^';
            if (code >= '0' && code <= 'Z') text += code;
        }
        return text;
    }
    [[nodiscard]] bool lockOn(int virtualKey) const {
        return state_.at(static_cast<std::size_t>(virtualKey)) != 0;
    }

    KeyboardLayout& foregroundLayout() override {
        ++layoutQueries;
        return *this;
    }
    std::int16_t VkKeyScanExA(char character) override {
        if (character >= 'a' && character <= 'z')
            return static_cast<std::int16_t>(character - 'a' + 'A');
        if (character >= 'A' && character <= 'Z')
            return static_cast<std::int16_t>(character | kNeedsShift);
        if (character >= '0' && character <= '9') return character;
        if (character == ' ' || character == '\t' || character == '\r') return character;
        if (character == '\n') return 0x20D;
        if (character == '+') return 0x1BB;
        if (character == '~') return 0x1C0;
        if (character == '}') return 0x1DD;
        if (character == '{') return 0x1DB;
        if (character == '@') return 0x632;
        if (character == '\x01') return 0;
        return -1;
    }
    std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override {
        return static_cast<std::uint16_t>(virtualKey ^ 0x80U);
    }

    void SendInput(std::span<const KeyRecord> records) override {
        if (takes == 0) return;
        if (takes > 0) --takes;
        batches.emplace_back(records.begin(), records.end());
        for (const KeyRecord& record : records) flipLock(record.virtualKey, record.flags);
    }
    void keybd_event(std::uint8_t virtualKey, std::uint8_t, std::uint32_t flags) override {
        static constexpr const char* kHex = "0123456789abcdef";
        keybdEvents.push_back({kHex[virtualKey >> 4U], kHex[virtualKey & 15U], ' ',
                               kHex[(flags >> 4U) & 15U], kHex[flags & 15U]});
        flipLock(virtualKey, flags);
    }
    std::int16_t GetKeyState(int virtualKey) override {
        return state_.at(static_cast<std::size_t>(virtualKey));
    }
    std::uint8_t platformIdentifier() override { return platform; }
    void SendKeys(std::string_view script, bool wait) override {
        if (platformSenderFails) throw RuntimeError(error_number::kInvalidCall, "");
        sentToPlatform.push_back(std::string(script) + (wait ? "|wait" : "|"));
    }
    void GetKeyboardState(std::span<std::uint8_t, 256> state) override {
        std::copy(state_.begin(), state_.end(), state.begin());
    }
    void SetKeyboardState(std::span<const std::uint8_t, 256> state) override {
        std::copy(state.begin(), state.end(), state_.begin());
    }

private:
    void flipLock(std::uint16_t virtualKey, std::uint32_t flags) {
        const bool isLock =
            virtualKey == kVkCapital || virtualKey == kVkNumLock || virtualKey == kVkScroll;
        if (isLock && (flags & kKeyEventKeyUp) == 0) state_[virtualKey] ^= 1;
    }

    std::array<std::uint8_t, 256> state_{};
};

}  // namespace kalvo::testing
