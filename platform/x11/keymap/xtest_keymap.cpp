#include "platform/x11/keymap/xtest_keymap.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

#include <cstring>
#include <memory>
#include "platform/x11/keymap/xcb_xkb.h"

namespace kalvo {

namespace {

using MapReply = XReply<xcb_xkb_get_map_reply_t>;

MapReply mapOf(const X11Connection& connection, std::uint16_t keyboard) {
    constexpr std::uint16_t kAll = 0xFF;
    return MapReply(xcb_xkb_get_map_reply(connection.get(),
                                          xcb_xkb_get_map(connection.get(), keyboard, kAll, 0, 0, 0,
                                                          0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
                                          nullptr));
}

bool sameMap(const xcb_xkb_get_map_reply_t& a, const xcb_xkb_get_map_reply_t& b) {
    constexpr std::size_t kReply = 32;
    if (a.length != b.length) return false;
    // Everything behind device, sequence number and length.
    constexpr std::size_t kHead = 8;
    return std::memcmp(reinterpret_cast<const char*>(&a) + kHead,
                       reinterpret_cast<const char*>(&b) + kHead,
                       kReply - kHead + std::size_t{a.length} * 4) == 0;
}

struct CloseDisplay {
    void operator()(Display* display) const { XCloseDisplay(display); }
};

struct FreeKeyboard {
    void operator()(XkbDescRec* keyboard) const { XkbFreeKeyboard(keyboard, 0, True); }
};

// Xlib ends the process on a refused request by default; here it is no more than
// a map that stays as it is.
int ignoreError(Display*, XErrorEvent*) { return 0; }

}  // namespace

// Xlib writes the map: XCB has no way to turn the reply with a map into the
// request that sets it.
void alignXtestKeymap(X11Connection& connection) {
    const MapReply core = mapOf(connection, connection.coreKeyboard());
    const MapReply xtest = mapOf(connection, connection.xtestKeyboard());
    if (!core || !xtest || sameMap(*core, *xtest)) return;

    const std::unique_ptr<Display, CloseDisplay> display(
        XOpenDisplay(connection.displayName().c_str()));
    if (!display) return;
    XSetIOErrorExitHandler(
        display.get(), [](Display*, void*) {}, nullptr);
    const auto previous = XSetErrorHandler(ignoreError);
    const std::unique_ptr<XkbDescRec, FreeKeyboard> map(
        XkbGetMap(display.get(), XkbAllMapComponentsMask, connection.coreKeyboard()));
    if (map) {
        map->device_spec = connection.xtestKeyboard();
        XkbSetMap(display.get(), XkbAllMapComponentsMask, map.get());
    }
    XSync(display.get(), False);
    XSetErrorHandler(previous);
}

}  // namespace kalvo
