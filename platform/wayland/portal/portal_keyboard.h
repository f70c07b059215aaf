// Synthetic keyboard input through the desktop's RemoteDesktop portal.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/keyboard_input.h"
#include "platform/shared/alt_keypad.h"
#include "platform/wayland/portal/portal_session.h"
#include "platform/wayland/portal/session_layout.h"
#include "platform/wayland/wayland_keymap.h"
#include "platform/wayland/wayland_layout.h"
#include "platform/x11/clipboard_paste.h"

namespace kalvo {

// Sends symbols: the desktop finds their keys in the user's layout. What that layout lacks
// is typed with its dead keys where they lead there, or pasted where the site wants that; the
// rest cannot be typed. Nobody tells which application it is, so it is typed into as any is
// (section "*"), nor how far it is: typing keeps to a pace that desktops can follow.
class PortalKeyboard : public KeyboardInput, private AltKeypad::Sink {
public:
    static constexpr std::string_view kName = "portail du bureau (Wayland)";

    [[nodiscard]] static bool available();

    // Throws RuntimeError 5 when the session has no such portal.
    PortalKeyboard();
    ~PortalKeyboard() override;
    PortalKeyboard(const PortalKeyboard&) = delete;
    PortalKeyboard& operator=(const PortalKeyboard&) = delete;

    [[nodiscard]] std::string_view name() const override { return kName; }
    [[nodiscard]] std::string_view remark() const override;
    void requestLeave() override { session_->ask(); }
    void useManners(const MannerOf& mannerOf) override { mannerOf_ = mannerOf; }
    void prepareFor(std::string_view script) override;
    [[nodiscard]] std::string takeUntyped() override;
    [[nodiscard]] bool reconnects() const override { return session_->alive(); }
    [[nodiscard]] TypingStop obstacle() override;
    [[nodiscard]] KeyboardLayout& foregroundLayout() override { return layout_; }
    [[nodiscard]] bool awaitTarget(int milliseconds) override;
    void SendInput(std::span<const KeyRecord> records) override;
    [[nodiscard]] bool connected() override;
    void finishInput() override { session_->finish(); }
    void keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) override;
    [[nodiscard]] std::int16_t GetKeyState(int virtualKey) override;

private:
    using Clock = std::chrono::steady_clock;

    void passKey(const KeyRecord& record) override;
    void passComposed(char character) override;
    [[nodiscard]] xkb_keysym_t symbolOf(const KeyRecord& record);
    void send(xkb_keysym_t symbol, bool down);
    void tap(xkb_keysym_t symbol);
    void strike(const SessionKey& key);
    void rest(int time);
    [[nodiscard]] bool paste(char character);

    std::unique_ptr<PortalSession> session_;
    WaylandKeymap map_;
    WaylandLayout layout_{map_};
    SessionLayout sessionLayout_;
    AltKeypad altKeypad_{*this};
    std::vector<xkb_keysym_t> down_;
    std::string untyped_;
    MannerOf mannerOf_;
    TypingManner manner_;
    std::unique_ptr<ClipboardPaste> clipboard_;
    bool numLock_ = false;
    Clock::time_point due_;  // when what was sent is taken, at the pace kept to
};

}  // namespace kalvo
