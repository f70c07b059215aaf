// Synthetic keyboard input through user32.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/windows/keyboard/input_sender.h"
#include "platform/windows/keyboard/session_access.h"

namespace kalvo {

// One layout of the system.
class WindowsLayout : public KeyboardLayout {
public:
    explicit WindowsLayout(HKL layout = nullptr) : layout_(layout) {}

    [[nodiscard]] std::int16_t VkKeyScanExA(char character) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyExA(std::uint16_t virtualKey) override;

private:
    HKL layout_;
};

// Keeps to the pauses of the application's manner and to its extended keys. Its methods
// change nothing here.
class WindowsKeyboard : public KeyboardInput {
public:
    explicit WindowsKeyboard(InputSender::Send send = ::SendInput) : sender_(std::move(send)) {}

    [[nodiscard]] std::string_view name() const override { return "SendInput"; }
    [[nodiscard]] bool connected() override { return access_.open(); }
    [[nodiscard]] TypingStop obstacle() override;
    void useManners(MannerOf mannerOf) override { mannerOf_ = std::move(mannerOf); }
    void prepareFor(std::string_view script) override;
    [[nodiscard]] KeyboardLayout& foregroundLayout() override;
    void SendInput(std::span<const KeyRecord> records) override;
    [[nodiscard]] std::optional<std::string> clipboardText() override;
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;
    [[nodiscard]] std::uint16_t MapVirtualKeyA(std::uint16_t virtualKey) override;
    [[nodiscard]] std::uint8_t platformIdentifier() override;
    [[nodiscard]] unsigned char CharToOemA(char character) override;
    void GetKeyboardState(std::span<std::uint8_t, 256> state) override;
    void SetKeyboardState(std::span<const std::uint8_t, 256> state) override;

private:
    WindowsLayout layout_;
    SessionAccess access_;
    InputSender sender_;
    MannerOf mannerOf_;
    TypingManner manner_;
};

}  // namespace kalvo
