#include "platform/x11/spare_keycodes.h"

#include <algorithm>
#include <iterator>
#include <thread>

#include "platform/keyboard_input.h"
#include "platform/x11/xcb_xkb.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr auto kLevelStates = std::to_array<std::uint16_t>(
    {0, kNeedsShift, kNeedsControl | kNeedsAlt, kNeedsShift | kNeedsControl | kNeedsAlt});

// Virtual keys without a meaning in any layout here, one for each spare keycode.
constexpr auto kUnassigned = std::to_array<std::uint8_t>(
    {0xD0, 0xD1, 0xD2, 0xD3, 0xD4, 0xD5, 0xD6, 0xD7, 0xD8, 0xD9, 0xDA, 0x97, 0x98,
     0x99, 0x9A, 0x9B, 0x9C, 0x9D, 0x9E, 0x9F, 0xB8, 0xB9, 0x88, 0x89, 0x8A, 0x8B,
     0x8C, 0x8D, 0x8E, 0x8F, 0x3A, 0x3B, 0x3C, 0x3D, 0x3E, 0x3F, 0x40});

// Scan code 0 stands for "no key", so its keycode is never used.
constexpr xkb_keycode_t kFirstUsable = kScanToKeycode + 1;

// French text first, so that it shares as few keycodes as possible.
constexpr std::string_view kLikelyOrder = "éÉèÈàÀçÇêÊùÙâÂîÎôÔûÛëËïÏœŒæÆ€°«»²µüÜöÖäÄ§£"_ansi;

}  // namespace

SpareKeycodes::SpareKeycodes(X11Connection& connection, X11Keymap& keymap)
    : connection_(connection), keymap_(keymap) {
    keymapChanged();
}

SpareKeycodes::~SpareKeycodes() {
    Clock::time_point lastUse;
    for (const Spare& spare : spares_) lastUse = std::max(lastUse, spare.lastUse);
    settle(lastUse);
    keymap_.update();
    for (Spare& spare : spares_) {
        if (spare.symbols[0] == XKB_KEY_NoSymbol) continue;
        spare.symbols = {};
        write(spare);
    }
    connection_.sync();
}

void SpareKeycodes::keymapChanged() {
    findFourLevelType();
    std::vector<Spare> found;
    const xkb_keycode_t first = std::max(xkb_keymap_min_keycode(keymap_.get()), kFirstUsable);
    const xkb_keycode_t last = std::min(xkb_keymap_max_keycode(keymap_.get()), xkb_keycode_t{255});
    for (xkb_keycode_t key = last; key >= first && found.size() < kUnassigned.size(); --key) {
        const auto ours = std::find_if(spares_.begin(), spares_.end(),
                                       [&](const Spare& spare) { return spare.keycode == key; });
        if (ours != spares_.end() && holds(*ours))
            found.push_back(*ours);
        else if (xkb_keymap_num_layouts_for_key(keymap_.get(), key) == 0)
            found.push_back({.keycode = key, .symbols = {}, .lastUse = {}});
    }
    spares_ = std::move(found);
}

// The map may have come from another program since: a key counts as ours only as
// long as it has exactly our symbols.
bool SpareKeycodes::holds(const Spare& spare) const {
    if (spare.symbols[0] == XKB_KEY_NoSymbol) return false;
    for (xkb_level_index_t level = 0; level < levels_; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap_.get(), spare.keycode, 0, level, &symbols);
        if ((count == 1 ? *symbols : XKB_KEY_NoSymbol) != spare.symbols[level]) return false;
    }
    return true;
}

// The type whose levels are Shift, AltGr and both; the two-level type, which every
// map has in second place, where there is none.
void SpareKeycodes::findFourLevelType() {
    keyType_ = 1;
    levels_ = 2;
    const xkb_mod_mask_t altGr = keymap_.modifiers().level3.held;
    const XReply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(
        connection_.get(),
        xcb_xkb_get_map(connection_.get(), connection_.coreKeyboard(), XCB_XKB_MAP_PART_KEY_TYPES,
                        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
        nullptr));
    if (!reply || altGr == 0) return;
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                               reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                               reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                               reply->totalVModMapKeys, reply->present, &map);
    std::uint8_t index = 0;
    for (auto type = xcb_xkb_get_map_map_types_rtrn_iterator(reply.get(), &map); type.rem > 0;
         xcb_xkb_key_type_next(&type), ++index) {
        if (type.data->numLevels != kLevels || type.data->mods_mask != (XCB_MOD_MASK_SHIFT | altGr))
            continue;
        std::array<xkb_mod_mask_t, kLevels> masks{};
        for (auto entry = xcb_xkb_key_type_map_iterator(type.data); entry.rem > 0;
             xcb_xkb_kt_map_entry_next(&entry))
            if (entry.data->active != 0 && entry.data->level < kLevels)
                masks[entry.data->level] = entry.data->mods_mask;
        if (masks == std::array<xkb_mod_mask_t, kLevels>{0, XCB_MOD_MASK_SHIFT, altGr,
                                                         XCB_MOD_MASK_SHIFT | altGr}) {
            keyType_ = index;
            levels_ = kLevels;
            return;
        }
    }
}

std::optional<KeyStroke> SpareKeycodes::strokeFor(xkb_keysym_t symbol) {
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    const auto strokeOn = [&](Spare& spare) -> std::optional<KeyStroke> {
        const auto at = std::find(spare.symbols.begin(), spare.symbols.end(), symbol);
        if (at == spare.symbols.end()) return std::nullopt;
        spare.lastUse = Clock::now();
        return KeyStroke{spare.keycode,
                         kLevelStates[static_cast<std::size_t>(at - spare.symbols.begin())]};
    };
    for (Spare& spare : spares_)
        if (const auto stroke = strokeOn(spare)) return stroke;

    Spare* const spare = leastRecentlyUsed();
    if (spare == nullptr) return std::nullopt;
    if (spare->symbols[0] != XKB_KEY_NoSymbol) settle(spare->lastUse);
    spare->symbols = companionsOf(symbol);
    write(*spare);
    return strokeOn(*spare);
}

SpareKeycodes::Spare* SpareKeycodes::leastRecentlyUsed() {
    const auto oldest =
        std::min_element(spares_.begin(), spares_.end(),
                         [](const Spare& a, const Spare& b) { return a.lastUse < b.lastUse; });
    return oldest == spares_.end() ? nullptr : &*oldest;
}

// The time runs from when the last keys went out, which is now at the latest.
void SpareKeycodes::settle(Clock::time_point lastUse) const {
    if (lastUse == Clock::time_point{}) return;
    connection_.flush();
    std::this_thread::sleep_until(lastUse + kSettleTime);
}

// The symbols the layout lacks, likely ones first.
std::vector<xkb_keysym_t> SpareKeycodes::missingSymbols() {
    std::string order;
    for (int code = ' '; code < 0x80; ++code) order.push_back(static_cast<char>(code));
    order += kLikelyOrder;
    for (int code = 0x80; code <= 0xFF; ++code)
        if (kLikelyOrder.find(static_cast<char>(code)) == std::string_view::npos)
            order.push_back(static_cast<char>(code));
    std::vector<xkb_keysym_t> missing;
    for (const char character : order) {
        const xkb_keysym_t symbol = xkb_utf32_to_keysym(ansiToUnicode(character));
        if (symbol != XKB_KEY_NoSymbol && keymap_.layout().VkKeyScanExA(character) == -1)
            missing.push_back(symbol);
    }
    return missing;
}

// The symbols bound together with this one: always the same for one layout.
std::array<xkb_keysym_t, SpareKeycodes::kLevels> SpareKeycodes::companionsOf(xkb_keysym_t symbol) {
    std::array<xkb_keysym_t, kLevels> symbols{symbol};
    const auto missing = missingSymbols();
    const auto at = std::find(missing.begin(), missing.end(), symbol);
    if (at == missing.end()) return symbols;
    const std::size_t first = static_cast<std::size_t>(at - missing.begin()) / levels_ * levels_;
    const std::size_t count = std::min(levels_, missing.size() - first);
    std::copy_n(missing.begin() + static_cast<std::ptrdiff_t>(first), count, symbols.begin());
    return symbols;
}

void SpareKeycodes::write(const Spare& spare) {
    struct Values {
        xcb_xkb_key_sym_map_t head;
        std::array<std::uint32_t, kLevels> symbols;
    };
    const bool empty = spare.symbols[0] == XKB_KEY_NoSymbol;
    const auto levels = static_cast<std::uint8_t>(empty ? 0 : levels_);
    Values values{};
    if (!empty) {
        values.head.kt_index[0] = keyType_;
        values.head.groupInfo = 1;
        values.head.width = levels;
        values.head.nSyms = levels;
        std::copy(spare.symbols.begin(), spare.symbols.end(), values.symbols.begin());
    }
    const auto key = static_cast<xcb_keycode_t>(spare.keycode);
    keymap_.expectOwnChange(spare.keycode);
    const xcb_setup_t* const setup = xcb_get_setup(connection_.get());
    xcb_xkb_set_map(connection_.get(), connection_.coreKeyboard(), XCB_XKB_MAP_PART_KEY_SYMS,
                    XCB_XKB_SET_MAP_FLAGS_RECOMPUTE_ACTIONS, setup->min_keycode, setup->max_keycode,
                    0, 0, key, 1, levels, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, &values);
}

std::uint8_t SpareKeycodes::virtualKeyOf(xkb_keycode_t keycode) const {
    for (std::size_t i = 0; i < spares_.size(); ++i)
        if (spares_[i].keycode == keycode) return kUnassigned[i];
    return 0;
}

std::optional<xkb_keycode_t> SpareKeycodes::keycodeOf(std::uint16_t virtualKey) const {
    for (std::size_t i = 0; i < spares_.size(); ++i)
        if (kUnassigned[i] == virtualKey) return spares_[i].keycode;
    return std::nullopt;
}

}  // namespace kalvo
