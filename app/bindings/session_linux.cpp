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
    return WaylandKeyboard::available() ? KeyboardKind::kWayland : KeyboardKind::kX11;
}

}  // namespace

std::unique_ptr<KeyboardInput> connectKeyboard(KeyboardKind asked) {
    if (kindFor(asked) == KeyboardKind::kWayland) return std::make_unique<WaylandKeyboard>();
    return std::make_unique<X11Keyboard>();
}

std::string keyboardRemark(const KeyboardInput& keyboard) {
    if (keyboard.name() != X11Keyboard::kName || !inWaylandSession()) return {};
    return std::string(
        "Dans cette session Wayland, seules les applications X11 reçoivent la saisie ; les autres ne reçoivent rien."_ansi);
}

std::unique_ptr<TypingWatch> connectTypingWatch(KeyboardKind asked,
                                                std::function<WatchRules()> rules) {
    if (kindFor(asked) != KeyboardKind::kX11)
        return std::make_unique<WaylandTypingWatch>(std::move(rules));
    return std::make_unique<X11TypingWatch>(std::move(rules));
}

std::unique_ptr<ForegroundWindow> watchForegroundWindow(KeyboardKind asked) {
    if (kindFor(asked) != KeyboardKind::kX11)
        return std::make_unique<WaylandForegroundWindow>(std::string(kOurWindows));
    return std::make_unique<X11ForegroundWindow>();
}

bool displayNamed() { return x11Named() || inWaylandSession(); }

bool displayAnswers() { return waylandNamed() ? waylandAnswers() : x11Answers(); }

void onDisplayLoss(void (*handler)()) { onX11Loss(handler); }

}  // namespace kalvo
