#include "platform/x11/x11_connection.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <string>
#include <string_view>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

RuntimeError cannotType(std::string_view reason) {
    return {error_number::kInvalidCall,
            std::string("Émulation clavier impossible : "_ansi) + std::string(reason)};
}

}  // namespace

X11Connection::X11Connection(const char* display)
    : displayName_(display == nullptr ? "" : display) {
    int screen = 0;
    connection_ = xcb_connect(display, &screen);
    try {
        if (!alive())
            throw cannotType(
                "aucun affichage X11 n'est accessible (vérifiez la variable DISPLAY)."_ansi);
        requireExtensions();
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        findKeyboards();
    } catch (...) {
        xcb_disconnect(connection_);
        throw;
    }
}

X11Connection::~X11Connection() { xcb_disconnect(connection_); }

void X11Connection::requireExtensions() {
    if (xkb_x11_setup_xkb_extension(
            connection_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEvent_, nullptr) == 0)
        throw cannotType("l'extension XKB manque au serveur X."_ansi);
    if (xcb_get_extension_data(connection_, &xcb_test_id)->present == 0)
        throw cannotType("l'extension XTEST manque au serveur X."_ansi);
    const XReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_, xcb_input_xi_query_version(connection_, 2, 2), nullptr));
    if (!version) throw cannotType("l'extension XInput 2 manque au serveur X."_ansi);
}

void X11Connection::findKeyboards() {
    const std::int32_t core = xkb_x11_get_core_keyboard_device_id(connection_);
    if (core < 0) throw cannotType("le serveur X n'a pas de clavier."_ansi);
    coreKeyboard_ = static_cast<std::uint16_t>(core);

    const XReply<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection_, xcb_input_xi_query_device(connection_, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices) throw cannotType("le serveur X n'a pas de clavier."_ansi);
    for (auto at = xcb_input_xi_query_device_infos_iterator(devices.get()); at.rem > 0;
         xcb_input_xi_device_info_next(&at)) {
        const std::string_view name(xcb_input_xi_device_info_name(at.data), at.data->name_len);
        if (at.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
            at.data->attachment == coreKeyboard_ && name.ends_with("XTEST keyboard"))
            xtestKeyboard_ = at.data->deviceid;
    }
    if (xtestKeyboard_ == 0) throw cannotType("le serveur X n'a pas de clavier XTEST."_ansi);
}

void X11Connection::sync() {
    letOthersGoOn();
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    focus_ = reply ? reply->focus : xcb_window_t{XCB_NONE};
}

void X11Connection::holdOthers() {
    if (holdsOthers_) return;
    xcb_grab_server(connection_);
    sync();
    holdsOthers_ = true;
}

void X11Connection::letOthersGoOn() {
    if (holdsOthers_) xcb_ungrab_server(connection_);
    holdsOthers_ = false;
}

}  // namespace kalvo
