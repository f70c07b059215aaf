#include "platform/x11/keymap/x11_keymap.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "platform/x11/keymap/xcb_xkb.h"
#include "platform/x11/keymap/xtest_keymap.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::uint16_t kMapParts =
    XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP |
    XCB_XKB_MAP_PART_KEY_ACTIONS | XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;

}  // namespace

X11Keymap::X11Keymap(X11Connection& connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    selectEvents();
    if (!context_ || !fetch())
        throw RuntimeError(
            error_number::kInvalidCall,
            std::string("Émulation clavier impossible : disposition du clavier illisible."_ansi));
}

void X11Keymap::selectEvents() {
    constexpr std::uint16_t kEvents =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kState =
        XCB_XKB_STATE_PART_GROUP_STATE | XCB_XKB_STATE_PART_MODIFIER_LOCK;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = details.stateDetails = kState;
    xcb_xkb_select_events_aux(connection_.get(), connection_.coreKeyboard(),
                              kEvents | XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, kMapParts, kMapParts,
                              &details);
    xcb_xkb_select_events_aux(connection_.get(), connection_.xtestKeyboard(), kEvents, 0, 0,
                              kMapParts, kMapParts, &details);
}

bool X11Keymap::fetch() {
    alignXtestKeymap(connection_);
    XkbKeymapHandle keymap(xkb_x11_keymap_new_from_device(context_.get(), connection_.get(),
                                                          connection_.coreKeyboard(),
                                                          XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap || xkb_keymap_num_layouts(keymap.get()) == 0) return false;
    const XkbStateHandle state(
        xkb_x11_state_new_from_device(keymap.get(), connection_.get(), connection_.coreKeyboard()));
    if (!state) return false;
    keymap_ = std::move(keymap);
    group_ = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    locks_ = xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED);
    layouts_.clear();
    for (xkb_layout_index_t group = 0; group < xkb_keymap_num_layouts(keymap_.get()); ++group)
        layouts_.push_back(
            std::make_unique<XkbLayout>(keymap_.get(), group, XkbLayout::DeadKeys::skipped));
    readModifiers();
    return true;
}

void X11Keymap::readModifiers() {
    const auto find = [&](xkb_keysym_t symbol) {
        return findModifierKey(keymap_.get(), group_, symbol);
    };
    modifiers_ = {.shift = find(XKB_KEY_Shift_L),
                  .control = find(XKB_KEY_Control_L),
                  .alt = find(XKB_KEY_Alt_L),
                  .level3 = find(XKB_KEY_ISO_Level3_Shift),
                  .capsLock = find(XKB_KEY_Caps_Lock),
                  .numLock = find(XKB_KEY_Num_Lock),
                  .scrollLock = find(XKB_KEY_Scroll_Lock)};
    modifierKeycodes_.clear();
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap_.get());
         key <= xkb_keymap_max_keycode(keymap_.get()); ++key) {
        const XkbStateHandle state(xkb_state_new(keymap_.get()));
        xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
        const bool holds = xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_DEPRESSED) != 0;
        xkb_state_update_key(state.get(), key, XKB_KEY_UP);
        const bool locks = xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED) != 0;
        if (holds && !locks) modifierKeycodes_.push_back(key);
    }
}

bool X11Keymap::update() {
    readEvents();
    if (!std::exchange(changed_, false)) return false;
    // A map may have to be set through a connection of its own.
    connection_.flush();
    return fetch();
}

void X11Keymap::readEvents() {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if (event->response_type == connection_.xkbEvent())
            changed_ = isNews(*event) || changed_;
        else if (otherEvents_)
            otherEvents_(*event);
    }
}

bool X11Keymap::isNews(const xcb_generic_event_t& event) {
    switch (event.pad0) {  // the XKB event's own type
        case XCB_XKB_STATE_NOTIFY: {
            const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
            group_ = state.group;
            locks_ = state.lockedMods;
            return false;
        }
        case XCB_XKB_MAP_NOTIFY: return event.full_sequence != ownChange_;
        default: return event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY;
    }
}

std::optional<xkb_keycode_t> X11Keymap::keyWithSymbol(xkb_keysym_t symbol) const {
    constexpr xkb_level_index_t kLevels = 2;
    for (xkb_level_index_t level = 0; level < kLevels; ++level)
        for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap_.get());
             key <= xkb_keymap_max_keycode(keymap_.get()); ++key) {
            const xkb_keysym_t* symbols = nullptr;
            const int count =
                xkb_keymap_key_get_syms_by_level(keymap_.get(), key, 0, level, &symbols);
            if (count == 1 && *symbols == symbol) return key;
        }
    return std::nullopt;
}

}  // namespace kalvo
