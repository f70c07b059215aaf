#include "platform/x11/layout/named_keys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>
#include <utility>

namespace kalvo {

namespace {

using Symbols = std::array<xkb_keysym_t, 256>;

consteval Symbols namedSymbols() {
    Symbols symbols{};
    constexpr auto kSingle = std::to_array<std::pair<std::uint8_t, xkb_keysym_t>>(
        {{0x08, XKB_KEY_BackSpace},    {0x09, XKB_KEY_Tab},
         {0x0C, XKB_KEY_Clear},        {0x0D, XKB_KEY_Return},
         {0x10, XKB_KEY_Shift_L},      {0x11, XKB_KEY_Control_L},
         {0x12, XKB_KEY_Alt_L},        {0x13, XKB_KEY_Pause},
         {0x14, XKB_KEY_Caps_Lock},    {0x1B, XKB_KEY_Escape},
         {0x21, XKB_KEY_Prior},        {0x22, XKB_KEY_Next},
         {0x23, XKB_KEY_End},          {0x24, XKB_KEY_Home},
         {0x25, XKB_KEY_Left},         {0x26, XKB_KEY_Up},
         {0x27, XKB_KEY_Right},        {0x28, XKB_KEY_Down},
         {0x29, XKB_KEY_Select},       {0x2A, XKB_KEY_3270_PrintScreen},
         {0x2B, XKB_KEY_Execute},      {0x2C, XKB_KEY_Print},
         {0x2D, XKB_KEY_Insert},       {0x2E, XKB_KEY_Delete},
         {0x2F, XKB_KEY_Help},         {0x5B, XKB_KEY_Super_L},
         {0x5C, XKB_KEY_Super_R},      {0x5D, XKB_KEY_Menu},
         {0x6A, XKB_KEY_KP_Multiply},  {0x6B, XKB_KEY_KP_Add},
         {0x6C, XKB_KEY_KP_Separator}, {0x6D, XKB_KEY_KP_Subtract},
         {0x6E, XKB_KEY_KP_Decimal},   {0x6F, XKB_KEY_KP_Divide},
         {0x90, XKB_KEY_Num_Lock},     {0x91, XKB_KEY_Scroll_Lock},
         {0xA0, XKB_KEY_Shift_L},      {0xA1, XKB_KEY_Shift_R},
         {0xA2, XKB_KEY_Control_L},    {0xA3, XKB_KEY_Control_R},
         {0xA4, XKB_KEY_Alt_L},        {0xA5, XKB_KEY_Alt_R}});
    for (const auto& [virtualKey, symbol] : kSingle) symbols[virtualKey] = symbol;
    for (std::uint8_t i = 0; i < 10; ++i) symbols[0x60U + i] = XKB_KEY_KP_0 + i;
    for (std::uint8_t i = 0; i < 24; ++i) symbols[0x70U + i] = XKB_KEY_F1 + i;
    return symbols;
}

constexpr Symbols kSymbols = namedSymbols();

}  // namespace

xkb_keysym_t symbolOfNamedKey(std::uint8_t virtualKey) { return kSymbols[virtualKey]; }

bool isModifierKey(std::uint8_t virtualKey) {
    return (virtualKey >= 0x10 && virtualKey <= 0x12) || (virtualKey >= 0xA0 && virtualKey <= 0xA5);
}

}  // namespace kalvo
