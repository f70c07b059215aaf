// What a session of Linux has for the program to type with and to watch.
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/bindings/system_bindings.h"
#include "platform/wayland/wayland_foreground_window.h"
#include "platform/wayland/wayland_keyboard.h"
#include "platform/wayland/wayland_typing_watch.h"
#include "platform/x11/target/x11_foreground_window.h"
#include "platform/x11/target/x11_typing_watch.h"
#include "platform/x11/x11_keyboard.h"
#include "platform/x11/x11_loss.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"
#ifdef KALVO_PORTAL
#include "platform/wayland/portal/portal_keyboard.h"
#endif

namespace kalvo {

namespace {

// The name of our own windows, as the desktop file has it.
constexpr std::string_view kOurWindows = "kalvo-horizon";

// A compositor may run within an X session: then it is the one that counts.
bool inWaylandSession() {
    const char* const type = std::getenv("XDG_SESSION_TYPE");
    return waylandNamed() || (type != nullptr && std::string_view(type) == "wayland");
}

// The kind that types when `asked` is.
KeyboardKind kindFor(KeyboardKind asked) {
    if (asked != KeyboardKind::kAutomatic) return asked;
    if (!inWaylandSession()) return KeyboardKind::kX11;
    if (WaylandKeyboard::available()) return KeyboardKind::kWayland;
#ifdef KALVO_PORTAL
    if (PortalKeyboard::available()) return KeyboardKind::kPortal;
#endif
    return KeyboardKind::kX11;
}

#ifndef KALVO_PORTAL
[[noreturn]] void failWithoutPortal() {
    throw RuntimeError(
        error_number::kInvalidCall,
        std::string(
            "Émulation clavier impossible : ce programme a été construit sans le portail."_ansi));
}
#endif

}  // namespace

std::unique_ptr<KeyboardInput> connectKeyboard(KeyboardKind asked) {
    switch (kindFor(asked)) {
        case KeyboardKind::kWayland: return std::make_unique<WaylandKeyboard>();
        case KeyboardKind::kPortal:
#ifdef KALVO_PORTAL
            return std::make_unique<PortalKeyboard>();
#else
            failWithoutPortal();
#endif
        default: return std::make_unique<X11Keyboard>();
    }
}

std::string keyboardRemark(const KeyboardInput& keyboard) {
    if (keyboard.name() != X11Keyboard::kName || !inWaylandSession())
        return std::string(keyboard.remark());
    return std::string(
        "Dans cette session Wayland, seules les applications X11 reçoivent la saisie ; les autres ne reçoivent rien."_ansi);
}

std::unique_ptr<TypingWatch> connectTypingWatch(KeyboardKind asked,
                                                std::function<WatchRules()> rules) {
    if (kindFor(asked) != KeyboardKind::kX11)
        return std::make_unique<WaylandTypingWatch>(std::move(rules));
    return std::make_unique<X11TypingWatch>(std::move(rules));
}

bool stopKeySeen(KeyboardKind asked) { return kindFor(asked) == KeyboardKind::kX11; }

std::unique_ptr<ForegroundWindow> watchForegroundWindow(KeyboardKind asked) {
    if (kindFor(asked) != KeyboardKind::kX11)
        return std::make_unique<WaylandForegroundWindow>(std::string(kOurWindows));
    return std::make_unique<X11ForegroundWindow>();
}

// On Wayland no window can be put beside the icon, nor kept from taking the focus.
std::string_view windowSystems() { return inWaylandSession() ? "xcb;wayland" : ""; }

bool displayNamed() { return x11Named() || inWaylandSession(); }

bool displayAnswers() { return waylandNamed() ? waylandAnswers() : x11Answers(); }

void onDisplayLoss(void (*handler)()) { onX11Loss(handler); }

}  // namespace kalvo
