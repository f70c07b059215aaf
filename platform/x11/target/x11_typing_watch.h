// What happens in an X session while the program types into one of its applications.
#pragma once

#include <bitset>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>

#include "platform/typing_watch.h"
#include "platform/x11/target/x11_application.h"
#include "platform/x11/x11_connection.h"

namespace kalvo {

// Listens to the raw keys of every keyboard but XTEST's, through a connection of its own,
// and asks who has the focus. Windows of one client, process or client group are one
// application; ours are another one.
class X11TypingWatch : public TypingWatch {
public:
    // `rules` is asked whenever typing begins. Throws RuntimeError 5 when there is no
    // display.
    explicit X11TypingWatch(std::function<WatchRules()> rules, const char* display = nullptr);

    void begin() override;
    [[nodiscard]] bool glance() override;
    [[nodiscard]] TypingStop look() override;
    [[nodiscard]] Hold hold() override { return hold_; }
    [[nodiscard]] bool targetInFront() override;
    [[nodiscard]] bool connected() override { return connection_.alive(); }

private:
    using Clock = std::chrono::steady_clock;

    void select(std::uint16_t device, std::uint32_t events);
    void listenToKeyboards();
    void findStopKey();
    void forgetKeys();
    // Takes in the keys that have arrived.
    void readKeys();
    void keyMoved(std::uint16_t keyboard, std::uint32_t key, bool down);
    [[nodiscard]] bool keyDown() const;
    [[nodiscard]] TypingStop lookAtFocus(xcb_window_t focused);

    std::function<WatchRules()> rules_;
    X11Connection connection_;
    X11Applications applications_{connection_};
    WatchRules rule_;
    xcb_window_t target_ = XCB_NONE;
    xcb_window_t known_ = XCB_NONE;  // the window of the target's last seen with the focus
    X11Application application_;
    Clock::time_point nobodySince_;
    Hold hold_ = Hold::kNone;
    std::uint8_t stopKey_ = 0;
    bool stopKeyPressed_ = false;
    bool keyPressed_ = false;  // since the last look
    // By keyboard: the keys that went down since begin(), and those that were down then.
    std::map<std::uint16_t, std::bitset<256>> down_;
    std::bitset<256> heldBefore_;
    bool keyboardsChanged_ = false;
};

}  // namespace kalvo
