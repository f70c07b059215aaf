#include "keys/key_names.h"

#include <algorithm>
#include <array>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

struct NamedKey {
    std::string_view name;
    std::int16_t code;
};

// PRTSC and PRTSCR are two keys: print and print screen.
constexpr auto kNamedKeys = std::to_array<NamedKey>({
    {"BACKSPACE", 0x08}, {"BS", 0x08},         {"BKSP", 0x08},    {"BREAK", 0x13},
    {"CAPSLOCK", 0x14},  {"DELETE", 0x2E},     {"DEL", 0x2E},     {"DOWN", 0x28},
    {"END", 0x23},       {"ENTER", 0x0D},      {"ESC", 0x1B},     {"HELP", 0x2F},
    {"HOME", 0x24},      {"INS", 0x2D},        {"INSERT", 0x2D},  {"LEFT", 0x25},
    {"NUMLOCK", 0x90},   {"PGDN", 0x22},       {"PGUP", 0x21},    {"PRTSC", 0x2A},
    {"RIGHT", 0x27},     {"SCROLLLOCK", 0x91}, {"TAB", 0x09},     {"UP", 0x26},
    {"F1", 0x70},        {"F2", 0x71},         {"F3", 0x72},      {"F4", 0x73},
    {"F5", 0x74},        {"F6", 0x75},         {"F7", 0x76},      {"F8", 0x77},
    {"F9", 0x78},        {"F10", 0x79},        {"F11", 0x7A},     {"F12", 0x7B},
    {"F13", 0x7C},       {"F14", 0x7D},        {"F15", 0x7E},     {"F16", 0x7F},
    {"NUMPAD0", 0x60},   {"NUMPAD1", 0x61},    {"NUMPAD2", 0x62}, {"NUMPAD3", 0x63},
    {"NUMPAD4", 0x64},   {"NUMPAD5", 0x65},    {"NUMPAD6", 0x66}, {"NUMPAD7", 0x67},
    {"NUMPAD8", 0x68},   {"NUMPAD9", 0x69},    {"PRTSCR", 0x2C},
});

}  // namespace

std::int16_t KeyNameToCode(std::string_view name) {
    const auto* const found =
        std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                     [&](const NamedKey& key) { return equalIgnoringCase(key.name, name); });
    return found == kNamedKeys.end() ? std::int16_t{0} : found->code;
}

std::string_view nameOfKey(std::uint8_t code) {
    const auto* const found = std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                                           [&](const NamedKey& key) { return key.code == code; });
    return found == kNamedKeys.end() ? std::string_view() : found->name;
}

}  // namespace kalvo
