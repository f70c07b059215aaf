// Stand-ins for what a command has no use for.
#pragma once

#include <string>
#include <string_view>

#include "platform/foreground_window.h"
#include "platform/keyboard_input.h"
#include "platform/serial_port.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// A session without a keyboard: nothing is typed and no lock is on.
class NoKeyboard : public KeyboardInput, public KeyboardLayout {
public:
    bool connected() override { return false; }
    std::int16_t VkKeyScanExA(char) override { return -1; }
    std::uint16_t MapVirtualKeyExA(std::uint16_t) override { return 0; }
    KeyboardLayout& foregroundLayout() override { return *this; }
    void SendInput(std::span<const KeyRecord>) override {}
    void keybd_event(std::uint8_t, std::uint8_t, std::uint32_t) override {}
    std::int16_t GetKeyState(int) override { return 0; }
};

// A session without windows of others.
class NoForegroundWindow : public ForegroundWindow {
public:
    void remember() override {}
    void giveBack() override {}
    bool foreign() override { return true; }
};

// A port that is never open.
class NoSerialPort : public SerialPort {
public:
    void setCommPort(int) override {}
    [[nodiscard]] int CommPort() const override { return 1; }
    void setSettings(std::string_view) override {}
    void setHandshaking(Handshaking) override {}
    void setRThreshold(int) override {}
    void setSThreshold(int) override {}
    void setInputMode(int) override {}
    void setInputLen(int) override {}
    std::string Input() override { throw notOpen(); }
    void Output(std::string_view) override { throw notOpen(); }
    [[nodiscard]] std::size_t InBufferCount() const override { return 0; }
    void setPortOpen(bool open) override {
        if (open) throw notOpen();
    }
    void reopen() override { throw notOpen(); }
    [[nodiscard]] bool PortOpen() const override { return false; }
    [[nodiscard]] int CommEvent() const override { return 0; }
    void onComm(std::function<void()>) override {}
    void onInput(std::function<void(std::string_view)>) override {}
    void onOpening(std::function<void()>) override {}
    void onClosed(std::function<void(std::size_t)>) override {}
    void onLineChange(std::function<void(bool)>) override {}
    [[nodiscard]] std::string deviceName() const override { return {}; }
    [[nodiscard]] std::string identity(int) const override { return {}; }

private:
    static RuntimeError notOpen() {
        return {error_number::kPortNotOpen, std::string("Le port n'est pas ouvert"_ansi)};
    }
};

}  // namespace kalvo
