// The keyboard of a session that may come and go.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/bindings/system_bindings.h"
#include "app/process/file_lock.h"
#include "platform/keyboard_input.h"

namespace kalvo {

// Types through a keyboard as long as there is one; without one it is asked for anew,
// every two seconds at most, whenever somebody asks whether it is connected.
class ReconnectingKeyboard : public KeyboardInput {
public:
    using Connect = std::function<std::unique_ptr<KeyboardInput>()>;

    // Tries at once. RuntimeErrors of `connect` mean that there is none now.
    explicit ReconnectingKeyboard(Connect connect);
    // The same for a command that is no use without: RuntimeErrors of `connect` get out.
    enum Needed { kNeeded };
    ReconnectingKeyboard(Connect connect, Needed)
        : connect_(std::move(connect)), keyboard_(connect_()) {}

    [[nodiscard]] bool takeTurn() override { return turns_.take(); }
    void giveTurnBack() override { turns_.giveBack(); }

    [[nodiscard]] bool connected() override;
    [[nodiscard]] TypingStop obstacle() override {
        static_cast<void>(connected());
        return keyboard_->obstacle();
    }
    [[nodiscard]] std::string_view name() const override { return keyboard_->name(); }
    void requestLeave() override {
        leaveAsked_ = true;
        keyboard_->requestLeave();
    }
    [[nodiscard]] std::string_view remark() const override { return keyboard_->remark(); }
    [[nodiscard]] KeyboardLayout& foregroundLayout() override {
        return keyboard_->foregroundLayout();
    }
    void useManners(const MannerOf& mannerOf) override;
    [[nodiscard]] std::string target() const override { return target_; }
    [[nodiscard]] std::optional<std::string> clipboardText() override {
        return keyboard_->clipboardText();
    }
    [[nodiscard]] std::string takeUntyped() override { return keyboard_->takeUntyped(); }
    void prepareFor(std::string_view script) override { keyboard_->prepareFor(script); }
    [[nodiscard]] bool awaitTarget(int milliseconds) override {
        return keyboard_->awaitTarget(milliseconds);
    }
    void SendInput(std::span<const KeyRecord> records) override { keyboard_->SendInput(records); }
    void finishInput() override { keyboard_->finishInput(); }
    void endTyping() override { keyboard_->endTyping(); }
    [[nodiscard]] bool holdLayout() override { return keyboard_->holdLayout(); }
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override {
        keyboard_->keybd_event(virtualKey, scanCode, flags);
    }
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override {
        return keyboard_->GetKeyState(virtualKey);
    }
    [[nodiscard]] std::uint16_t MapVirtualKeyA(std::uint16_t virtualKey) override {
        return keyboard_->MapVirtualKeyA(virtualKey);
    }
    [[nodiscard]] std::uint8_t platformIdentifier() override {
        return keyboard_->platformIdentifier();
    }
    [[nodiscard]] unsigned char CharToOemA(char character) override {
        return keyboard_->CharToOemA(character);
    }
    void SendKeys(std::string_view script, bool wait) override {
        keyboard_->SendKeys(script, wait);
    }
    void GetKeyboardState(std::span<std::uint8_t, 256> state) override {
        keyboard_->GetKeyboardState(state);
    }
    void SetKeyboardState(std::span<const std::uint8_t, 256> state) override {
        keyboard_->SetKeyboardState(state);
    }

private:
    void tryToConnect();

    Connect connect_;
    MannerOf mannerOf_;
    std::string target_;
    FileLock turns_{keyboardTurnsFile()};
    std::unique_ptr<KeyboardInput> keyboard_;  // never null
    std::uint32_t lastTry_ = 0;
    bool leaveAsked_ = false;
};

}  // namespace kalvo
