#include "platform/x11/layout/layout_keys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/x11/layout/xkb_handles.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::uint16_t kBeside = kNeedsShift + 1;  // ranks between Shift and AltGr
constexpr std::uint8_t kKeyBesideShift = 0x56;
constexpr std::uint8_t kSpaceBar = 0x39;
constexpr std::uint8_t kFirstCharacterKey = 0x02;
constexpr std::uint8_t kLastCharacterKey = 0x35;

constexpr auto kDeadKeys = std::to_array<std::pair<xkb_keysym_t, char>>({
    {XKB_KEY_dead_circumflex, '^'},
    {XKB_KEY_dead_grave, '`'},
    {XKB_KEY_dead_tilde, '~'},
    {XKB_KEY_dead_acute, '\xB4'},
    {XKB_KEY_dead_diaeresis, '\xA8'},
    {XKB_KEY_dead_cedilla, '\xB8'},
    {XKB_KEY_dead_macron, '\xAF'},
    {XKB_KEY_dead_abovering, '\xB0'},
});

struct TypedCharacter {
    char character;
    bool dead;
};

std::optional<TypedCharacter> characterOf(xkb_keysym_t symbol) {
    for (const auto& [deadKey, character] : kDeadKeys)
        if (symbol == deadKey) return TypedCharacter{character, true};
    const char32_t codePoint = xkb_keysym_to_utf32(symbol);
    if (codePoint < ' ' || codePoint == 0x7F) return std::nullopt;
    const char character = unicodeToAnsi(codePoint);
    if (ansiToUnicode(character) != codePoint) return std::nullopt;
    return TypedCharacter{character, false};
}

xkb_keysym_t symbolAt(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group,
                      xkb_level_index_t level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, key, group, level, &symbols);
    return count == 1 ? *symbols : XKB_KEY_NoSymbol;
}

// A keymap with fewer groups on a key than the keyboard has uses the first one.
xkb_layout_index_t groupOfKey(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t group) {
    const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap, key);
    return groups == 0 ? 0 : group % groups;
}

std::optional<std::uint16_t> shiftStateOf(xkb_keymap* keymap, xkb_keycode_t key,
                                          xkb_layout_index_t group, xkb_level_index_t level,
                                          xkb_mod_mask_t altGr) {
    const xkb_mod_mask_t shift = 1U << xkb_keymap_mod_get_index(keymap, XKB_MOD_NAME_SHIFT);
    std::array<xkb_mod_mask_t, 16> masks{};
    const std::size_t count =
        xkb_keymap_key_get_mods_for_level(keymap, key, group, level, masks.data(), masks.size());
    std::optional<std::uint16_t> best;
    for (std::size_t i = 0; i < count; ++i) {
        if ((masks[i] & ~(shift | altGr)) != 0) continue;
        const auto state = static_cast<std::uint16_t>(((masks[i] & shift) != 0 ? kNeedsShift : 0) |
                                                      ((masks[i] & altGr) != 0 ? kNeedsAltGr : 0));
        if (!best || state < *best) best = state;
    }
    return best;
}

void appendKey(xkb_keymap* keymap, xkb_layout_index_t group, std::uint8_t scanCode,
               xkb_mod_mask_t altGr, std::vector<LayoutCharacter>& characters) {
    const xkb_keycode_t key = scanCode + kScanToKeycode;
    const xkb_layout_index_t own = groupOfKey(keymap, key, group);
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, key, own);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        const auto typed = characterOf(symbolAt(keymap, key, own, level));
        if (!typed) continue;
        const auto state = shiftStateOf(keymap, key, own, level, altGr);
        if (state) characters.push_back({typed->character, scanCode, *state, typed->dead});
    }
}

}  // namespace

ModifierOfKey findModifierKey(xkb_keymap* keymap, xkb_layout_index_t group, xkb_keysym_t symbol) {
    const xkb_keycode_t last = xkb_keymap_max_keycode(keymap);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        if (symbolAt(keymap, key, groupOfKey(keymap, key, group), 0) != symbol) continue;
        const XkbStateHandle state(xkb_state_new(keymap));
        ModifierOfKey found{.keycode = key};
        xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
        found.held = xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_DEPRESSED);
        xkb_state_update_key(state.get(), key, XKB_KEY_UP);
        found.locked = xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED);
        return found;
    }
    return {};
}

std::vector<LayoutCharacter> layoutCharacters(xkb_keymap* keymap, xkb_layout_index_t group) {
    const xkb_mod_mask_t altGr = findModifierKey(keymap, group, XKB_KEY_ISO_Level3_Shift).held;
    std::vector<LayoutCharacter> characters;
    for (std::uint8_t scanCode = kFirstCharacterKey; scanCode <= kLastCharacterKey; ++scanCode)
        appendKey(keymap, group, scanCode, altGr, characters);
    appendKey(keymap, group, kSpaceBar, altGr, characters);
    appendKey(keymap, group, kKeyBesideShift, altGr, characters);
    std::stable_sort(characters.begin(), characters.end(), [](const auto& a, const auto& b) {
        const auto rank = [](const LayoutCharacter& c) {
            const bool beside = c.scanCode == kKeyBesideShift && c.shiftState < kNeedsAltGr;
            return std::tuple(beside ? kBeside : c.shiftState, c.scanCode);
        };
        return rank(a) < rank(b);
    });
    return characters;
}

xkb_keysym_t unshiftedSymbol(xkb_keymap* keymap, xkb_layout_index_t group, std::uint8_t scanCode) {
    const xkb_keycode_t key = scanCode + kScanToKeycode;
    return symbolAt(keymap, key, groupOfKey(keymap, key, group), 0);
}

}  // namespace kalvo
