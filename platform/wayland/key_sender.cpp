#include "platform/wayland/key_sender.h"

#include <sys/mman.h>
#include <unistd.h>

#include <thread>

#include "text/ansi_text.h"
#include "virtual-keyboard-unstable-v1.h"

namespace kalvo {

namespace {

// An application that hears of the session's first keyboard has to ask for its keys.
constexpr std::chrono::milliseconds kFirstKeyboard{500};

std::uint32_t milliseconds() {
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                          std::chrono::steady_clock::now().time_since_epoch())
                                          .count());
}

}  // namespace

KeySender::KeySender(WaylandConnection& connection, const WaylandKeymap& map)
    : connection_(connection), state_(xkb_state_new(map.keymap.get())) {
    const bool first = !connection_.seatHasKeyboard();
    manager_ = connection_.bind<zwp_virtual_keyboard_manager_v1>(
        zwp_virtual_keyboard_manager_v1_interface, 1);
    if (manager_ == nullptr || connection_.seat() == nullptr)
        failToConnect("ce compositeur Wayland n'offre pas de clavier virtuel."_ansi);
    keyboard_ =
        zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(manager_, connection_.seat());
    giveKeymap(map.text);
    connection_.sync();
    if (!connection_.usable())
        failToConnect("le compositeur Wayland refuse le clavier virtuel."_ansi);
    if (first) std::this_thread::sleep_for(kFirstKeyboard);
}

KeySender::~KeySender() {
    zwp_virtual_keyboard_v1_destroy(keyboard_);
    zwp_virtual_keyboard_manager_v1_destroy(manager_);
    connection_.flush();
}

void KeySender::giveKeymap(const std::string& text) {
    const std::size_t size = text.size() + 1;
    const int file = memfd_create("kalvo-keymap", MFD_CLOEXEC);
    if (file < 0 || write(file, text.c_str(), size) != static_cast<ssize_t>(size))
        failToConnect("la table de clavier n'a pu être transmise."_ansi);
    zwp_virtual_keyboard_v1_keymap(keyboard_, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<std::uint32_t>(size));
    close(file);
}

void KeySender::press(xkb_keycode_t key) {
    if (key >= down_.size()) return;
    send(key, true);
    down_.set(key);
    ++presses_;
    rest(pause_);
}

void KeySender::release(xkb_keycode_t key) {
    if (key >= down_.size()) return;
    send(key, false);
    down_.reset(key);
    rest(pause_);
}

void KeySender::rest(std::chrono::milliseconds time) {
    if (time.count() == 0) return;
    connection_.flush();
    std::this_thread::sleep_for(time);
}

void KeySender::releaseAll() {
    for (xkb_keycode_t key = 0; key < down_.size(); ++key)
        if (down_[key]) release(key);
}

// The compositor passes our keys on without looking: what they do to the modifiers comes
// behind them, as from a keyboard of its own.
void KeySender::send(xkb_keycode_t key, bool down) {
    if (!connection_.usable()) return;
    constexpr xkb_keycode_t kToEvdev = 8;
    zwp_virtual_keyboard_v1_key(
        keyboard_, milliseconds(), key - kToEvdev,
        down ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    connection_.requested();
    constexpr int kModifiers =
        XKB_STATE_MODS_DEPRESSED | XKB_STATE_MODS_LATCHED | XKB_STATE_MODS_LOCKED;
    const int changed = xkb_state_update_key(state_.get(), key, down ? XKB_KEY_DOWN : XKB_KEY_UP);
    if ((changed & kModifiers) == 0) return;
    const auto part = [&](xkb_state_component component) {
        return xkb_state_serialize_mods(state_.get(), component);
    };
    zwp_virtual_keyboard_v1_modifiers(keyboard_, part(XKB_STATE_MODS_DEPRESSED),
                                      part(XKB_STATE_MODS_LATCHED), part(XKB_STATE_MODS_LOCKED), 0);
    connection_.requested();
}

bool KeySender::isLocked(const char* modifier) const {
    return xkb_state_mod_name_is_active(state_.get(), modifier, XKB_STATE_MODS_LOCKED) > 0;
}

}  // namespace kalvo
