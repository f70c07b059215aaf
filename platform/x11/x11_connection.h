// The connection to the X server that keystrokes are injected through.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace kalvo {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

// A reply or event of the server; null when the request failed.
template <typename T>
using XReply = std::unique_ptr<T, FreeReply>;

// Owns an XCB connection with the XKB, XTEST and XInput extensions. A lost
// connection ends nothing: requests are dropped and replies are null from then on.
class X11Connection {
public:
    // Connects to `display`, the one of the environment when null. Throws
    // RuntimeError 5 when there is none or an extension is missing.
    explicit X11Connection(const char* display);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] bool alive() const { return xcb_connection_has_error(connection_) == 0; }
    void flush() {
        letOthersGoOn();
        xcb_flush(connection_);
    }

    // Waits until the server has carried out everything sent so far.
    void sync();

    // From here to the next flush() or sync() the server serves nobody else, so that what
    // it says stays true. A caller that waits for anybody but the server flushes first.
    void holdOthers();
    // The window that had the focus at the last sync() or holdOthers().
    [[nodiscard]] xcb_window_t focusAtSync() const { return focus_; }
    [[nodiscard]] bool holdsOthers() const { return holdsOthers_; }

    // The display's name; empty for the one of the environment. XOpenDisplay takes both.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }
    // The XKB id of the core keyboard.
    [[nodiscard]] std::uint16_t coreKeyboard() const { return coreKeyboard_; }
    // The XKB id of the keyboard XTEST types on.
    [[nodiscard]] std::uint16_t xtestKeyboard() const { return xtestKeyboard_; }
    // The event code of all XKB events.
    [[nodiscard]] std::uint8_t xkbEvent() const { return xkbEvent_; }

private:
    void letOthersGoOn();
    void requireExtensions();
    void findKeyboards();

    std::string displayName_;
    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
    std::uint16_t coreKeyboard_ = 0;
    std::uint16_t xtestKeyboard_ = 0;
    std::uint8_t xkbEvent_ = 0;
    bool holdsOthers_ = false;
    xcb_window_t focus_ = XCB_NONE;
};

}  // namespace kalvo
