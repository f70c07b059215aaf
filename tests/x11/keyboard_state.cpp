#include "tests/x11/keyboard_state.h"

#include <X11/XKBlib.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace kalvo::testing {

KeyboardState::KeyboardState(const char* display) : display_(XOpenDisplay(display)) {}

KeyboardState::~KeyboardState() { XCloseDisplay(display_); }

void KeyboardState::lock(unsigned locks) const {
    XkbLockModifiers(display_, XkbUseCoreKbd, kCapsLock | kNumLock, locks);
    XSync(display_, False);
}

void KeyboardState::lockGroup(unsigned group) const {
    XkbLockGroup(display_, XkbUseCoreKbd, group);
    XSync(display_, False);
}

unsigned KeyboardState::locks() const {
    XkbStateRec state;
    XkbGetState(display_, XkbUseCoreKbd, &state);
    return state.locked_mods;
}

bool KeyboardState::anyKeyDown() const {
    std::array<char, 32> keys{};
    XQueryKeymap(display_, keys.data());
    return std::any_of(keys.begin(), keys.end(), [](char byte) { return byte != 0; });
}

void KeyboardState::moveRealKey(std::uint8_t keycode, bool down) const {
    constexpr int kDeviceKeyPress = 1;  // behind the first event of the extension
    xcb_connection_t* const x = xcb_connect(DisplayString(display_), nullptr);
    const auto* const extension = xcb_get_extension_data(x, &xcb_input_id);
    auto* const devices = xcb_input_xi_query_device_reply(
        x, xcb_input_xi_query_device(x, XCB_INPUT_DEVICE_ALL), nullptr);
    for (auto at = xcb_input_xi_query_device_infos_iterator(devices); at.rem > 0;
         xcb_input_xi_device_info_next(&at)) {
        const std::string_view name(xcb_input_xi_device_info_name(at.data), at.data->name_len);
        if (at.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && !name.starts_with("Virtual"))
            xcb_test_fake_input(x,
                                static_cast<std::uint8_t>(extension->first_event + kDeviceKeyPress +
                                                          (down ? 0 : 1)),
                                keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                static_cast<std::uint8_t>(at.data->deviceid));
    }
    std::free(devices);
    std::free(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    xcb_disconnect(x);
}

std::uint8_t KeyboardState::keycode(unsigned long keysym) const {
    return XKeysymToKeycode(display_, keysym);
}

}  // namespace kalvo::testing
