// A keyboard layout by its name, whatever the session uses.
#pragma once

#include <memory>
#include <string_view>

#include "platform/keyboard_input.h"

namespace kalvo {

// "us", "fr" and other names of countries, or the eight digits by which the system
// knows a layout ("0001040c"). RuntimeError 5 for an unknown one.
[[nodiscard]] std::unique_ptr<KeyboardLayout> makeNamedLayout(std::string_view name);

}  // namespace kalvo
