#include "platform/x11/keymap/spare_symbols.h"

#include <algorithm>
#include <cstring>

#include "platform/x11/keymap/xcb_xkb.h"
#include "platform/x11/x11_atoms.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kWordsOfKey = 1 + SpareKey::kLevels;  // in the property
constexpr std::uint32_t kMostKeys = 256;

using MapReply = XReply<xcb_xkb_get_map_reply_t>;

MapReply keyTypes(const X11Connection& connection) {
    return MapReply(xcb_xkb_get_map_reply(
        connection.get(),
        xcb_xkb_get_map(connection.get(), connection.coreKeyboard(), XCB_XKB_MAP_PART_KEY_TYPES, 0,
                        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
        nullptr));
}

MapReply keySymbols(const X11Connection& connection, xcb_keycode_t first, std::uint8_t count) {
    return MapReply(xcb_xkb_get_map_reply(
        connection.get(),
        xcb_xkb_get_map(connection.get(), connection.coreKeyboard(), 0, XCB_XKB_MAP_PART_KEY_SYMS,
                        0, 0, first, count, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
        nullptr));
}

xcb_xkb_get_map_map_t unpacked(const xcb_xkb_get_map_reply_t& reply) {
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(&reply), reply.nTypes, reply.nKeySyms,
                               reply.nKeyActions, reply.totalActions, reply.totalKeyBehaviors,
                               reply.virtualMods, reply.totalKeyExplicit, reply.totalModMapKeys,
                               reply.totalVModMapKeys, reply.present, &map);
    return map;
}

template <typename T>
void appendWords(std::vector<std::uint32_t>& words, const T* from, std::size_t bytes) {
    const std::size_t old = words.size();
    words.resize(old + bytes / sizeof(std::uint32_t));
    std::memcpy(words.data() + old, from, bytes);
}

}  // namespace

SpareSymbols::SpareSymbols(X11Connection& connection, X11Keymap& keymap)
    : connection_(connection),
      keymap_(keymap),
      property_(atomOf(connection, "_KALVO_HORIZON_SPARE_KEYS")) {
    keymapChanged();
}

void SpareSymbols::keymapChanged() {
    // The two-level type is in second place in every map.
    keyType_ = 1;
    levels_ = 2;
    if (keymap_.modifiers().level3.held == 0) return;
    if (const MapReply types = keyTypes(connection_)) useFourLevelType(*types);
}

// The type whose levels are Shift, AltGr and both, where there is one.
void SpareSymbols::useFourLevelType(const xcb_xkb_get_map_reply_t& types) {
    const xkb_mod_mask_t altGr = keymap_.modifiers().level3.held;
    const std::array<xkb_mod_mask_t, SpareKey::kLevels> wanted = {0, XCB_MOD_MASK_SHIFT, altGr,
                                                                  XCB_MOD_MASK_SHIFT | altGr};
    const xcb_xkb_get_map_map_t map = unpacked(types);
    std::uint8_t index = 0;
    for (auto type = xcb_xkb_get_map_map_types_rtrn_iterator(&types, &map); type.rem > 0;
         xcb_xkb_key_type_next(&type), ++index) {
        if (type.data->numLevels != wanted.size() || type.data->mods_mask != wanted.back())
            continue;
        std::array<xkb_mod_mask_t, SpareKey::kLevels> masks{};
        for (auto entry = xcb_xkb_key_type_map_iterator(type.data); entry.rem > 0;
             xcb_xkb_kt_map_entry_next(&entry))
            if (entry.data->active != 0 && entry.data->level < masks.size())
                masks[entry.data->level] = entry.data->mods_mask;
        if (masks != wanted) continue;
        keyType_ = index;
        levels_ = wanted.size();
        return;
    }
}

std::vector<SpareKey> SpareSymbols::recorded() const {
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_.get(),
                               xcb_get_property(connection_.get(), 0, connection_.root(), property_,
                                                XCB_ATOM_CARDINAL, 0, kMostKeys * kWordsOfKey),
                               nullptr));
    std::vector<SpareKey> keys;
    if (!reply || reply->format != 32) return keys;
    const auto* words = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    const std::uint32_t* const end = words + reply->value_len;
    for (; words + kWordsOfKey <= end; words += kWordsOfKey) {
        SpareKey key{.keycode = words[0], .symbols = {}};
        std::copy_n(words + 1, key.symbols.size(), key.symbols.begin());
        keys.push_back(key);
    }
    return keys;
}

bool SpareSymbols::inForce(const SpareKey& key) const {
    if (key.empty() || xkb_keymap_num_levels_for_key(keymap_.get(), key.keycode, 0) != levels_)
        return false;
    for (xkb_level_index_t level = 0; level < levels_; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), key.keycode, 0, level, &symbols);
        if ((count == 1 ? *symbols : XKB_KEY_NoSymbol) != key.symbols[level]) return false;
    }
    return true;
}

// The request replaces the symbols of a row of keys: those between the changed ones are
// sent as they are. Nobody else can change the map between reading and writing it.
void SpareSymbols::write(std::span<const SpareKey> changed, std::span<const SpareKey> all) {
    const auto [first, last] = std::minmax_element(
        changed.begin(), changed.end(),
        [](const SpareKey& a, const SpareKey& b) { return a.keycode < b.keycode; });
    if (first == changed.end()) return;
    const auto begin = static_cast<xcb_keycode_t>(first->keycode);
    const auto count = static_cast<std::uint8_t>(last->keycode - first->keycode + 1);
    xcb_grab_server(connection_.get());
    if (const MapReply current = keySymbols(connection_, begin, count)) {
        std::vector<std::uint32_t> keys;
        const xcb_xkb_get_map_map_t map = unpacked(*current);
        xkb_keycode_t keycode = begin;
        for (auto key = xcb_xkb_get_map_map_syms_rtrn_iterator(current.get(), &map); key.rem > 0;
             xcb_xkb_key_sym_map_next(&key), ++keycode) {
            const auto ours =
                std::find_if(changed.begin(), changed.end(),
                             [&](const SpareKey& spare) { return spare.keycode == keycode; });
            if (ours != changed.end())
                appendKey(keys, *ours);
            else
                appendWords(keys, key.data,
                            sizeof *key.data + key.data->nSyms * sizeof(xcb_keysym_t));
        }
        const auto heads = count * sizeof(xcb_xkb_key_sym_map_t) / sizeof(std::uint32_t);
        const auto symbols = static_cast<std::uint16_t>(keys.size() - heads);
        const xcb_setup_t* const setup = xcb_get_setup(connection_.get());
        const auto change = xcb_xkb_set_map(
            connection_.get(), connection_.coreKeyboard(), XCB_XKB_MAP_PART_KEY_SYMS,
            XCB_XKB_SET_MAP_FLAGS_RECOMPUTE_ACTIONS, setup->min_keycode, setup->max_keycode, 0, 0,
            begin, count, symbols, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, keys.data());
        keymap_.expectOwnChange(change.sequence);
        record(all);
    }
    xcb_ungrab_server(connection_.get());
    connection_.flush();
}

void SpareSymbols::appendKey(std::vector<std::uint32_t>& keys, const SpareKey& key) const {
    const xcb_xkb_key_sym_map_t head{.kt_index = {keyType_, 0, 0, 0},
                                     .groupInfo = 1,
                                     .width = static_cast<std::uint8_t>(levels_),
                                     .nSyms = static_cast<std::uint16_t>(levels_)};
    appendWords(keys, &head, sizeof head);
    appendWords(keys, key.symbols.data(), levels_ * sizeof(xkb_keysym_t));
}

void SpareSymbols::record(std::span<const SpareKey> all) const {
    std::vector<std::uint32_t> words;
    for (const SpareKey& key : all) {
        if (key.empty()) continue;
        words.push_back(key.keycode);
        words.insert(words.end(), key.symbols.begin(), key.symbols.end());
    }
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, connection_.root(), property_,
                        XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(words.size()),
                        words.data());
}

}  // namespace kalvo
