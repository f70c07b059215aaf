#include "platform/x11/keymap/spare_keycodes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/keyboard_input.h"
#include "platform/x11/keymap/character_symbol.h"
#include "platform/x11/layout/layout_keys.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::array<std::uint16_t, SpareKey::kLevels> kLevelStates = {0, kNeedsShift, kNeedsAltGr,
                                                                       kNeedsShift | kNeedsAltGr};

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

SpareKeycodes::SpareKeycodes(X11Connection& connection, X11Keymap& keymap, TargetPace& pace)
    : symbols_(connection, keymap), keymap_(keymap), pace_(pace) {
    keymapChanged();
}

void SpareKeycodes::keymapChanged() {
    symbols_.keymapChanged();
    const std::vector<SpareKey> recorded = symbols_.recorded();
    std::vector<Spare> found;
    const xkb_keycode_t first = std::max(xkb_keymap_min_keycode(keymap_.get()), kFirstUsable);
    const xkb_keycode_t last = std::min(xkb_keymap_max_keycode(keymap_.get()), xkb_keycode_t{255});
    for (xkb_keycode_t key = last; key >= first && found.size() < kUnassigned.size(); --key) {
        const auto ours = std::find_if(recorded.begin(), recorded.end(),
                                       [&](const SpareKey& spare) { return spare.keycode == key; });
        if (ours != recorded.end() && symbols_.inForce(*ours))
            found.push_back({.key = *ours, .lastUse = 0});
        else if (xkb_keymap_num_layouts_for_key(keymap_.get(), key) == 0)
            found.push_back({.key = {.keycode = key, .symbols = {}}, .lastUse = 0});
    }
    for (Spare& spare : found)
        for (const Spare& before : spares_)
            if (before.key.keycode == spare.key.keycode) spare.lastUse = before.lastUse;
    spares_ = std::move(found);
}

void SpareKeycodes::prepare(std::vector<xkb_keysym_t> symbols) {
    wanted_ = std::move(symbols);
    std::vector<Spare*> idle = longestUnused();
    std::erase_if(idle, [&](const Spare* spare) { return isWanted(*spare); });
    bind(unbound(wanted_), idle);
}

std::optional<KeyStroke> SpareKeycodes::strokeFor(xkb_keysym_t symbol) {
    if (symbol == XKB_KEY_NoSymbol) return std::nullopt;
    if (const auto stroke = boundStroke(symbol)) return stroke;
    // Those that follow it among the wanted ones will be needed next; half of what there
    // is room for, so that the other half can wait for its turn.
    std::vector<xkb_keysym_t> needed = unbound(wanted_);
    const auto at = std::find(needed.begin(), needed.end(), symbol);
    if (at != needed.end())
        std::rotate(needed.begin(), at, needed.end());
    else
        needed.insert(needed.begin(), symbol);
    const std::vector<Spare*> spares = longestUnused();
    bind(std::move(needed), std::span(spares).first((spares.size() + 1) / 2));
    return boundStroke(symbol);
}

std::optional<KeyStroke> SpareKeycodes::boundStroke(xkb_keysym_t symbol) {
    for (Spare& spare : spares_) {
        const auto& symbols = spare.key.symbols;
        const auto at = std::find(symbols.begin(), symbols.end(), symbol);
        if (at == symbols.end()) continue;
        spare.lastUse = ++uses_;
        return KeyStroke{spare.key.keycode,
                         kLevelStates[static_cast<std::size_t>(at - symbols.begin())]};
    }
    return std::nullopt;
}

bool SpareKeycodes::isBound(xkb_keysym_t symbol) const {
    return std::any_of(spares_.begin(), spares_.end(), [&](const Spare& spare) {
        const auto& symbols = spare.key.symbols;
        return std::find(symbols.begin(), symbols.end(), symbol) != symbols.end();
    });
}

bool SpareKeycodes::isWanted(const Spare& spare) const {
    return std::any_of(wanted_.begin(), wanted_.end(), [&](xkb_keysym_t symbol) {
        const auto& symbols = spare.key.symbols;
        return std::find(symbols.begin(), symbols.end(), symbol) != symbols.end();
    });
}

std::vector<xkb_keysym_t> SpareKeycodes::unbound(std::vector<xkb_keysym_t> symbols) const {
    std::erase_if(symbols, [&](xkb_keysym_t symbol) { return isBound(symbol); });
    return symbols;
}

// The symbols of the code page that the layout lacks, likely ones first.
std::vector<xkb_keysym_t> SpareKeycodes::likelySymbols() {
    std::string order(kLikelyOrder);
    for (int code = ' '; code <= 0xFF; ++code)
        if (kLikelyOrder.find(static_cast<char>(code)) == std::string_view::npos)
            order.push_back(static_cast<char>(code));
    std::vector<xkb_keysym_t> symbols;
    for (const char character : order) {
        const xkb_keysym_t symbol = symbolOfCharacter(character);
        if (symbol != XKB_KEY_NoSymbol && keymap_.layout().VkKeyScanExA(character) == -1)
            symbols.push_back(symbol);
    }
    return symbols;
}

// Free levels first, then what may change. What an application has still to read must
// keep its meaning, so that symbols are only replaced behind it. Levels that are left are
// filled with what is likely to be needed another time.
void SpareKeycodes::bind(std::vector<xkb_keysym_t> symbols, std::span<Spare* const> mayChange) {
    if (symbols.empty()) return;
    std::size_t needed = symbols.size();
    for (const xkb_keysym_t likely : unbound(likelySymbols()))
        if (std::find(symbols.begin(), symbols.end(), likely) == symbols.end())
            symbols.push_back(likely);
    std::span<const xkb_keysym_t> rest(symbols);
    std::vector<SpareKey> changed;
    const auto fill = [&](SpareKey& key) {
        for (std::size_t level = 0; level < symbols_.levels() && !rest.empty(); ++level) {
            if (key.symbols[level] != XKB_KEY_NoSymbol) continue;
            key.symbols[level] = rest.front();
            rest = rest.subspan(1);
            needed -= std::min<std::size_t>(needed, 1);
        }
        changed.push_back(key);
    };
    for (Spare& spare : spares_)
        if (needed > 0 && spare.key.symbols[symbols_.levels() - 1] == XKB_KEY_NoSymbol)
            fill(spare.key);
    if (needed > 0) pace_.settle();
    for (Spare* const spare : mayChange) {
        if (needed == 0) break;
        const bool filledNow =
            std::any_of(changed.begin(), changed.end(),
                        [&](const SpareKey& key) { return key.keycode == spare->key.keycode; });
        if (filledNow) continue;
        spare->key.symbols = {};
        fill(spare->key);
    }
    std::vector<SpareKey> all;
    for (const Spare& spare : spares_) all.push_back(spare.key);
    symbols_.write(changed, all);
}

std::vector<SpareKeycodes::Spare*> SpareKeycodes::longestUnused() {
    std::vector<Spare*> order;
    for (Spare& spare : spares_) order.push_back(&spare);
    std::stable_sort(order.begin(), order.end(),
                     [](const Spare* a, const Spare* b) { return a->lastUse < b->lastUse; });
    return order;
}

std::uint8_t SpareKeycodes::virtualKeyOf(xkb_keycode_t keycode) const {
    for (std::size_t i = 0; i < spares_.size(); ++i)
        if (spares_[i].key.keycode == keycode) return kUnassigned[i];
    return 0;
}

std::optional<xkb_keycode_t> SpareKeycodes::keycodeOf(std::uint16_t virtualKey) const {
    for (std::size_t i = 0; i < spares_.size(); ++i)
        if (kUnassigned[i] == virtualKey) return spares_[i].key.keycode;
    return std::nullopt;
}

}  // namespace kalvo
