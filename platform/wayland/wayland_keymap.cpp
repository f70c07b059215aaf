#include "platform/wayland/wayland_keymap.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/wayland/wayland_connection.h"
#include "platform/x11/keymap/character_symbol.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// Rows of the US keyboard, from the first keycode on: each key alone, then with Shift.
struct Row {
    xkb_keycode_t first;
    std::string_view characters;
};
constexpr auto kRows = std::to_array<Row>({{49, "`~"},
                                           {10, "1!2@3#4$5%6^7&8*9(0)-_=+"},
                                           {24, "qQwWeErRtTyYuUiIoOpP[{]}"},
                                           {38, "aAsSdDfFgGhHjJkKlL;:'\""},
                                           {51, "\\|"},
                                           {52, "zZxXcCvVbBnNmM,<.>/?"},
                                           {94, "<>"}});
constexpr xkb_keycode_t kSpaceKey = 65;

// Lower and upper case, so that a letter's Shift is where everybody expects it.
constexpr std::string_view kPairs =
    "éÉèÈàÀçÇêÊùÙâÂîÎôÔûÛëËïÏœŒæÆüÜöÖäÄÿŸáÁãÃåÅìÌíÍðÐñÑòÒóÓõÕøØúÚýÝþÞšŠžŽ"_ansi;

// Keys of Asian and of multimedia keyboards: programs that know keys by their position know
// these.
constexpr auto kExtraKeycodes = std::to_array<xkb_keycode_t>(
    {97, 132, 100, 101, 102, 130, 131, 98, 99, 125, 148, 163, 164, 158, 172});

// Keys that are no characters, where a PC has them; the last three have no place there.
const std::vector<MapKey>& namedMapKeys() {
    static const std::vector<MapKey> keys = [] {
        std::vector<MapKey> all = {{9, {XKB_KEY_Escape}},
                                   {22, {XKB_KEY_BackSpace}},
                                   {23, {XKB_KEY_Tab, XKB_KEY_ISO_Left_Tab}},
                                   {36, {XKB_KEY_Return}},
                                   {kControlKey, {XKB_KEY_Control_L}},
                                   {kShiftKey, {XKB_KEY_Shift_L}},
                                   {62, {XKB_KEY_Shift_R}},
                                   {63, {XKB_KEY_KP_Multiply}},
                                   {kAltKey, {XKB_KEY_Alt_L}},
                                   {kCapsLockKey, {XKB_KEY_Caps_Lock}},
                                   {77, {XKB_KEY_Num_Lock}},
                                   {78, {XKB_KEY_Scroll_Lock}},
                                   {79, {XKB_KEY_KP_Home, XKB_KEY_KP_7}},
                                   {80, {XKB_KEY_KP_Up, XKB_KEY_KP_8}},
                                   {81, {XKB_KEY_KP_Prior, XKB_KEY_KP_9}},
                                   {82, {XKB_KEY_KP_Subtract}},
                                   {83, {XKB_KEY_KP_Left, XKB_KEY_KP_4}},
                                   {84, {XKB_KEY_KP_Begin, XKB_KEY_KP_5}},
                                   {85, {XKB_KEY_KP_Right, XKB_KEY_KP_6}},
                                   {86, {XKB_KEY_KP_Add}},
                                   {87, {XKB_KEY_KP_End, XKB_KEY_KP_1}},
                                   {88, {XKB_KEY_KP_Down, XKB_KEY_KP_2}},
                                   {89, {XKB_KEY_KP_Next, XKB_KEY_KP_3}},
                                   {90, {XKB_KEY_KP_Insert, XKB_KEY_KP_0}},
                                   {91, {XKB_KEY_KP_Delete, XKB_KEY_KP_Decimal}},
                                   {104, {XKB_KEY_KP_Enter}},
                                   {105, {XKB_KEY_Control_R}},
                                   {106, {XKB_KEY_KP_Divide}},
                                   {107, {XKB_KEY_Print}},
                                   {kLevel3Key, {XKB_KEY_ISO_Level3_Shift}},
                                   {110, {XKB_KEY_Home}},
                                   {111, {XKB_KEY_Up}},
                                   {112, {XKB_KEY_Prior}},
                                   {113, {XKB_KEY_Left}},
                                   {114, {XKB_KEY_Right}},
                                   {115, {XKB_KEY_End}},
                                   {116, {XKB_KEY_Down}},
                                   {117, {XKB_KEY_Next}},
                                   {118, {XKB_KEY_Insert}},
                                   {119, {XKB_KEY_Delete}},
                                   {127, {XKB_KEY_Pause}},
                                   {129, {XKB_KEY_KP_Separator}},
                                   {133, {XKB_KEY_Super_L}},
                                   {134, {XKB_KEY_Super_R}},
                                   {135, {XKB_KEY_Menu}},
                                   {146, {XKB_KEY_Help}},
                                   {137, {XKB_KEY_Clear}},
                                   {138, {XKB_KEY_Select}},
                                   {142, {XKB_KEY_Execute}}};
        constexpr auto kFunctionKeys = std::to_array<xkb_keycode_t>({67, 191});
        for (unsigned i = 0; i < 10; ++i) all.push_back({kFunctionKeys[0] + i, {XKB_KEY_F1 + i}});
        for (unsigned i = 0; i < 2; ++i) all.push_back({95 + i, {XKB_KEY_F11 + i}});
        for (unsigned i = 0; i < 12; ++i) all.push_back({kFunctionKeys[1] + i, {XKB_KEY_F13 + i}});
        return all;
    }();
    return keys;
}

std::vector<MapKey> usKeys() {
    std::vector<MapKey> keys;
    for (const Row& row : kRows)
        for (std::size_t i = 0; i + 1 < row.characters.size(); i += 2)
            keys.push_back(
                {row.first + static_cast<xkb_keycode_t>(i / 2),
                 {symbolOfCharacter(row.characters[i]), symbolOfCharacter(row.characters[i + 1])}});
    keys.push_back({kSpaceKey, {XKB_KEY_space, XKB_KEY_space}});
    return keys;
}

// The characters of the code page that the US keyboard lacks, two a key.
std::string missingCharacters() {
    std::string characters(kPairs);
    for (int code = 0x80; code <= 0xFF; ++code) {
        const char character = static_cast<char>(code);
        if (kPairs.find(character) == std::string_view::npos &&
            symbolOfCharacter(character) != XKB_KEY_NoSymbol)
            characters.push_back(character);
    }
    if (characters.size() % 2 != 0) characters.push_back(' ');
    return characters;
}

std::string nameOf(xkb_keysym_t symbol) {
    std::array<char, 64> name{};
    xkb_keysym_get_name(symbol, name.data(), name.size());
    return name.data();
}

std::string keyName(xkb_keycode_t keycode) { return "<K" + std::to_string(keycode) + ">"; }

// CapsLock is about letters, NumLock about the keypad.
const char* typeOf(const MapKey& key) {
    const xkb_keysym_t first = key.symbols.front();
    if (key.symbols.size() == 4)
        return first >= 'a' && first <= 'z' ? "FOUR_LEVEL_SEMIALPHABETIC" : "FOUR_LEVEL";
    if (key.symbols.size() == 1) return "ONE_LEVEL";
    return first >= XKB_KEY_KP_Space && first <= XKB_KEY_KP_Equal ? "KEYPAD" : "TWO_LEVEL";
}

std::string mapText(const std::vector<MapKey>& keys) {
    std::string keycodes = "xkb_keymap { xkb_keycodes \"kalvo\" { minimum = 8; maximum = 255;\n";
    std::string symbols = "xkb_symbols \"kalvo\" {\n";
    for (const MapKey& key : keys) {
        keycodes += keyName(key.keycode) + " = " + std::to_string(key.keycode) + ";\n";
        symbols += "key " + keyName(key.keycode) + " { type = \"" + typeOf(key) + "\", [ ";
        for (std::size_t i = 0; i < key.symbols.size(); ++i)
            symbols += (i == 0 ? "" : ", ") + nameOf(key.symbols[i]);
        symbols += " ] };\n";
    }
    return keycodes +
           "};\nxkb_types { include \"complete\" };\nxkb_compat { include \"complete\" };\n" +
           symbols +
           "modifier_map Shift { Shift_L, Shift_R };\nmodifier_map Lock { Caps_Lock };\n"
           "modifier_map Control { Control_L, Control_R };\nmodifier_map Mod1 { Alt_L };\n"
           "modifier_map Mod2 { Num_Lock };\nmodifier_map Mod4 { Super_L, Super_R };\n"
           "modifier_map Mod5 { ISO_Level3_Shift };\n};\n};\n";
}

}  // namespace

WaylandKeymap::WaylandKeymap()
    : context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES)), keys(usKeys()) {
    std::string_view rest;
    const std::string characters = missingCharacters();
    rest = characters;
    const auto next = [&](MapKey& key) {
        for (std::size_t i = 0; i < 2; ++i) key.symbols.push_back(symbolOfCharacter(rest[i]));
        rest.remove_prefix(2);
    };
    for (MapKey& key : keys)
        if (rest.size() >= 2) next(key);
    for (const xkb_keycode_t keycode : kExtraKeycodes) {
        if (rest.size() < 2) break;
        next(extraKeys.emplace_back(MapKey{keycode, {}}));
    }
    keys.insert(keys.end(), extraKeys.begin(), extraKeys.end());
    keys.insert(keys.end(), namedMapKeys().begin(), namedMapKeys().end());

    if (context) {
        xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
        keymap.reset(xkb_keymap_new_from_string(context.get(), mapText(keys).c_str(),
                                                XKB_KEYMAP_FORMAT_TEXT_V1,
                                                XKB_KEYMAP_COMPILE_NO_FLAGS));
    }
    if (!keymap) failToConnect("les tables de clavier XKB du système manquent."_ansi);
    // Written out, so that no client has to find the system's tables.
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    const std::unique_ptr<char, Free> written(
        xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1));
    if (!written) failToConnect("la table de clavier n'a pu être écrite."_ansi);
    text = written.get();
}

}  // namespace kalvo
