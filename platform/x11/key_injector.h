// Key events of the XTEST keyboard, and which of them are still down.
#pragma once

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <bitset>
#include <chrono>
#include <cstdint>
#include <thread>

#include "platform/x11/x11_connection.h"

namespace kalvo {

class KeyInjector {
public:
    explicit KeyInjector(X11Connection& connection) : connection_(connection) {}

    // A pause behind each press and each release; none at first.
    void setPause(std::chrono::milliseconds pause) { pause_ = pause; }

    void press(xkb_keycode_t key) {
        send(XCB_KEY_PRESS, key);
        down_.set(key);
        ++presses_;
        rest(pause_);
    }
    void release(xkb_keycode_t key) {
        send(XCB_KEY_RELEASE, key);
        down_.reset(key);
        rest(pause_);
    }
    void tap(xkb_keycode_t key) {
        press(key);
        release(key);
    }
    void releaseAll() {
        for (xkb_keycode_t key = 0; key < down_.size(); ++key)
            if (down_[key]) release(key);
    }

    // Lets everything out and waits.
    void rest(std::chrono::milliseconds time) {
        if (time.count() == 0) return;
        connection_.flush();
        std::this_thread::sleep_for(time);
    }

    // Events that do not count as pressed by this program.
    void send(std::uint8_t event, xkb_keycode_t key) {
        xcb_test_fake_input(connection_.get(), event, static_cast<std::uint8_t>(key),
                            XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }

    [[nodiscard]] bool isDown(xkb_keycode_t key) const { return down_[key]; }
    [[nodiscard]] const std::bitset<256>& down() const { return down_; }
    // How many keys have been pressed so far.
    [[nodiscard]] std::uint64_t presses() const { return presses_; }

private:
    X11Connection& connection_;
    std::bitset<256> down_;
    std::chrono::milliseconds pause_{0};
    std::uint64_t presses_ = 0;
};

}  // namespace kalvo
