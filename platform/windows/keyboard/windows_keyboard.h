// Synthetic keyboard input through user32.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/keyboard_input.h"
#include "platform/shared/alt_keypad.h"
#include "platform/shared/passed_text.h"
#include "platform/windows/keyboard/clipboard_paste.h"
#include "platform/windows/keyboard/input_sender.h"
#include "platform/windows/keyboard/session_access.h"

namespace kalvo {

// One layout of the system.
class WindowsLayout : public KeyboardLayout {
public:
    explicit WindowsLayout(HKL layout = nullptr) : layout_(layout) {}

    // What comes out as text instead of keys.
    [[nodiscard]] PassedText& text() { return text_; }
    void use(HKL layout) { layout_ = layout; }

    [[nodiscard]] std::int16_t VkKeyScanExA(char character) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;

private:
    HKL layout_;
    PassedText text_;
};

// Types as the application in front wants it. With "touches" the records go to the system
// as they are, which composes Alt+keypad codes itself; with the other methods characters
// reach the application by ways on which nothing of code page 1252 is lost. Extended keys
// are marked as such where an application asks for that only.
class WindowsKeyboard : public KeyboardInput, private AltKeypad::Sink {
public:
    explicit WindowsKeyboard(InputSender::Send send = ::SendInput) : sender_(std::move(send)) {}

    [[nodiscard]] std::string_view name() const override { return "SendInput"; }
    [[nodiscard]] bool connected() override { return access_.open(); }
    [[nodiscard]] TypingStop obstacle() override;
    void useManners(const MannerOf& mannerOf) override { mannerOf_ = mannerOf; }
    void prepareFor(std::string_view script) override;
    [[nodiscard]] std::string takeUntyped() override;
    [[nodiscard]] KeyboardLayout& foregroundLayout() override;
    void SendInput(std::span<const KeyRecord> records) override;
    void finishInput() override { paste(); }
    [[nodiscard]] std::optional<std::string> clipboardText() override;
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyA(std::uint16_t virtualKey) override;
    [[nodiscard]] std::uint8_t platformIdentifier() override;
    [[nodiscard]] unsigned char CharToOemA(char character) override;
    void GetKeyboardState(std::span<std::uint8_t, 256> state) override;
    void SetKeyboardState(std::span<const std::uint8_t, 256> state) override;

private:
    void passKey(const KeyRecord& record) override;
    void passComposed(char character) override;

    void add(const KeyRecord& record);
    void addCharacter(char character);
    void addKeypadCode(char character);
    void send();
    void paste();
    [[nodiscard]] bool modifierHeld() const;

    WindowsLayout layout_;
    SessionAccess access_;
    InputSender sender_;
    AltKeypad altKeypad_{*this};
    std::vector<INPUT> batch_;  // still to be sent
    MannerOf mannerOf_;
    TypingManner manner_;
    std::unique_ptr<ClipboardPaste> clipboard_;  // from the first use on
};

}  // namespace kalvo
