#include "platform/x11/layout/xkb_layout.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <string>

#include "platform/x11/layout/key_positions.h"
#include "platform/x11/layout/layout_keys.h"
#include "platform/x11/layout/xkb_handles.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Virtual keys Windows has not assigned: for character keys that
// neither the letters, nor the digits, nor the OEM keys account for.
constexpr std::uint8_t kFirstMakersKey = 0xC3;
constexpr std::uint8_t kLastMakersKey = 0xCF;

constexpr std::uint8_t kSpaceBar = 0x39;
constexpr std::uint8_t kLastCharacterKey = 0x35;

bool isLetter(xkb_keysym_t symbol) {
    return (symbol >= 'a' && symbol <= 'z') || (symbol >= 'A' && symbol <= 'Z');
}

OemFamily familyOf(xkb_keymap* keymap, xkb_layout_index_t group) {
    const auto symbol = [&](std::uint8_t scanCode) {
        return unshiftedSymbol(keymap, group, scanCode);
    };
    const bool azerty = symbol(0x10) == XKB_KEY_a && symbol(0x11) == XKB_KEY_z &&
                        symbol(0x27) == XKB_KEY_m && symbol(0x32) == XKB_KEY_comma;
    if (azerty) return symbol(0x35) == XKB_KEY_equal ? OemFamily::belgian : OemFamily::french;
    if (symbol(0x15) == XKB_KEY_z && symbol(0x0C) == XKB_KEY_ssharp) return OemFamily::german;
    return OemFamily::us;
}

}  // namespace

XkbLayout::XkbLayout(xkb_keymap* keymap, xkb_layout_index_t group, DeadKeys deadKeys) {
    placeVirtualKeys(keymap, group);
    readCharacters(keymap, group, deadKeys);
    addControlCharacters(familyOf(keymap, group) == OemFamily::us);
}

void XkbLayout::place(std::uint8_t scanCode, std::uint8_t virtualKey) {
    if (virtualKeys_[scanCode] != 0 || scanCodes_[virtualKey] != 0) return;
    virtualKeys_[scanCode] = virtualKey;
    scanCodes_[virtualKey] = scanCode;
}

void XkbLayout::placeVirtualKeys(xkb_keymap* keymap, xkb_layout_index_t group) {
    for (const KeyPosition& key : namedKeys()) scanCodes_[key.virtualKey] = key.scanCode;
    virtualKeys_[kSpaceBar] = ' ';
    for (std::uint8_t scanCode = 0x10; scanCode <= kLastCharacterKey; ++scanCode) {
        const xkb_keysym_t symbol = unshiftedSymbol(keymap, group, scanCode);
        if (isLetter(symbol)) place(scanCode, static_cast<std::uint8_t>(symbol & ~0x20U));
    }
    for (std::uint8_t scanCode = 0x02; scanCode < 0x0C; ++scanCode)
        place(scanCode, usCharacterKey(scanCode));
    for (const KeyPosition& key : oemKeys(familyOf(keymap, group)))
        place(key.scanCode, key.virtualKey);
    for (std::uint8_t scanCode = 0x10; scanCode <= kLastCharacterKey; ++scanCode)
        if (const std::uint8_t key = usCharacterKey(scanCode); key != 0) place(scanCode, key);
    std::uint8_t makersKey = kFirstMakersKey;
    for (const LayoutCharacter& character : layoutCharacters(keymap, group)) {
        if (virtualKeys_[character.scanCode] != 0 || makersKey > kLastMakersKey) continue;
        place(character.scanCode, makersKey++);
    }
}

void XkbLayout::readCharacters(xkb_keymap* keymap, xkb_layout_index_t group, DeadKeys deadKeys) {
    characters_.fill(-1);
    const auto all = layoutCharacters(keymap, group);
    const auto read = [&](bool dead) {
        for (const LayoutCharacter& found : all) {
            std::int16_t& answer = characters_[static_cast<unsigned char>(found.character)];
            const std::uint8_t virtualKey = virtualKeys_[found.scanCode];
            if (found.dead != dead || answer != -1 || virtualKey == 0) continue;
            answer = static_cast<std::int16_t>(virtualKey | found.shiftState);
        }
    };
    read(false);
    if (deadKeys == DeadKeys::answered) read(true);
}

void XkbLayout::addControlCharacters(bool us) {
    const auto set = [&](std::size_t code, int answer) {
        characters_[code] = static_cast<std::int16_t>(answer);
    };
    for (int code = 1; code <= 26; ++code)
        set(static_cast<std::size_t>(code), kNeedsControl | ('@' + code));
    set('\t', 0x09);
    set('\r', 0x0D);
    set('\b', 0x08);
    set(0x1B, 0x1B);
    set('\n', kNeedsControl | 0x0D);
    set(0x1C, kNeedsControl | virtualKeys_[0x2B]);
    set(0x1D, kNeedsControl | virtualKeys_[0x1B]);
    set(0x7F, kNeedsControl | 0x08);
    if (!us) return;
    // Only the US layout has these, on 2, 6 and the minus key.
    set(0x00, kNeedsControl | kNeedsShift | '2');
    set(0x1E, kNeedsControl | kNeedsShift | '6');
    set(0x1F, kNeedsControl | kNeedsShift | 0xBD);
}

std::int16_t XkbLayout::VkKeyScanExA(char character) {
    return characters_[static_cast<unsigned char>(character)];
}

std::uint16_t XkbLayout::MapVirtualKeyExA(std::uint16_t virtualKey) {
    return virtualKey < scanCodes_.size() ? scanCodes_[virtualKey] : std::uint16_t{0};
}

std::unique_ptr<KeyboardLayout> makeXkbLayout(std::string_view name) {
    const auto unknown = [&] {
        return RuntimeError(
            error_number::kInvalidCall,
            std::string("Disposition de clavier inconnue : "_ansi) + std::string(name) + ".");
    };
    const std::size_t separator = name.find_first_of("(:");
    const std::string layout(name.substr(0, separator));
    std::string variant;
    if (separator != std::string_view::npos) variant = name.substr(separator + 1);
    if (separator != std::string_view::npos && name[separator] == '(') {
        if (!variant.ends_with(')')) throw unknown();
        variant.pop_back();
    }
    if (layout.empty() || name.find_first_of(",+|/ ") != std::string_view::npos) throw unknown();

    const XkbContextHandle context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
    if (!context) throw unknown();
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    xkb_context_set_log_fn(context.get(), [](xkb_context*, xkb_log_level, const char*, va_list) {});
    const xkb_rule_names names{.rules = "evdev",
                               .model = "pc105",
                               .layout = layout.c_str(),
                               .variant = variant.c_str(),
                               .options = ""};
    const XkbKeymapHandle keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) throw unknown();
    return std::make_unique<XkbLayout>(keymap.get(), 0, XkbLayout::DeadKeys::answered);
}

}  // namespace kalvo
