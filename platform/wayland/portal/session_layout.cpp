#include "platform/wayland/portal/session_layout.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon-compose.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "platform/wayland/wayland_connection.h"
#include "platform/x11/layout/xkb_handles.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

using ComposeTable = std::unique_ptr<xkb_compose_table, XkbUnref<xkb_compose_table_unref>>;
using ComposeState = std::unique_ptr<xkb_compose_state, XkbUnref<xkb_compose_state_unref>>;

void onKeymap(void* text, wl_keyboard*, std::uint32_t format, int file, std::uint32_t size) {
    void* const map = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    close(file);
    if (map == MAP_FAILED) return;
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size > 0)
        *static_cast<std::string*>(text) = {static_cast<const char*>(map), size - 1};
    munmap(map, size);
}

// The key map of the session's keyboard as text; empty without one.
std::string sessionKeymap() {
    static constexpr wl_keyboard_listener kListener = {
        .keymap = onKeymap,
        .enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        .leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        .key = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                  std::uint32_t) {},
        .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                        std::uint32_t, std::uint32_t) {},
        .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
    std::string text;
    resumeNext([&] {
        WaylandConnection connection;
        if (connection.seat() == nullptr || !connection.seatHasKeyboard()) return;
        wl_keyboard* const keyboard = wl_seat_get_keyboard(connection.seat());
        wl_keyboard_add_listener(keyboard, &kListener, &text);
        connection.sync();
        wl_keyboard_destroy(keyboard);
    });
    return text;
}

// Where no compositor tells, the environment may (XKB_DEFAULT_LAYOUT).
XkbKeymapHandle keymapOf(xkb_context* context, const std::string& text) {
    if (!text.empty())
        return XkbKeymapHandle(xkb_keymap_new_from_string(
            context, text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (std::getenv("XKB_DEFAULT_LAYOUT") == nullptr) return nullptr;
    return XkbKeymapHandle(
        xkb_keymap_new_from_names(context, nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

constexpr xkb_level_index_t kShiftAltGr = 3;

bool isDeadKey(xkb_keysym_t symbol) { return symbol >= 0xFE50 && symbol <= 0xFE93; }

}  // namespace

SessionLayout::SessionLayout() {
    const XkbContextHandle context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context) return;
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    const XkbKeymapHandle keymap = keymapOf(context.get(), sessionKeymap());
    if (!keymap) return;
    read(keymap.get());
    addDeadKeys(context.get());
}

void SessionLayout::read(xkb_keymap* keymap) {
    const xkb_keycode_t last = xkb_keymap_max_keycode(keymap);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, 0);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t* symbols = nullptr;
            if (xkb_keymap_key_get_syms_by_level(keymap, key, 0, level, &symbols) == 1)
                add({.symbol = *symbols, .code = key, .level = level});
        }
    }
    std::erase_if(keys_, [](const auto& key) { return key.second.level > kShiftAltGr; });
}

// GNOME takes the first key that has the symbol, on whatever level, and holds Shift or AltGr
// but not both: such a symbol is pressed by its key's code, where it is easiest to reach.
void SessionLayout::add(const SessionKey& key) {
    const auto [known, isNew] = keys_.try_emplace(key.symbol, key);
    if (isNew && key.level < kShiftAltGr) known->second.code = 0;
    if (!isNew && known->second.code != 0 && key.level < known->second.level) known->second = key;
}

// What applications make of a dead key and the next one.
void SessionLayout::addDeadKeys(xkb_context* context) {
    const ComposeTable table(
        xkb_compose_table_new_from_locale(context, "en_US.UTF-8", XKB_COMPOSE_COMPILE_NO_FLAGS));
    if (!table) return;
    const ComposeState state(xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS));
    for (auto dead = keys_.lower_bound(0xFE50); dead != keys_.end() && isDeadKey(dead->first);
         ++dead)
        for (const auto& [symbol, letter] : keys_) {
            xkb_compose_state_reset(state.get());
            xkb_compose_state_feed(state.get(), dead->first);
            xkb_compose_state_feed(state.get(), symbol);
            if (xkb_compose_state_get_status(state.get()) == XKB_COMPOSE_COMPOSED)
                composed_.try_emplace(xkb_compose_state_get_one_sym(state.get()),
                                      std::vector{dead->second, letter});
        }
}

std::vector<SessionKey> SessionLayout::strokesFor(xkb_keysym_t symbol) const {
    if (keys_.empty()) return {{.symbol = symbol}};
    if (const auto key = keys_.find(symbol); key != keys_.end()) return {key->second};
    const auto found = composed_.find(symbol);
    return found == composed_.end() ? std::vector<SessionKey>() : found->second;
}

}  // namespace kalvo
