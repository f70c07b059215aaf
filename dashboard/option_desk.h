// Options.ini in the hands of its user.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/platform.h"
#include "settings/options.h"

namespace kalvo {

// Stores a value at once; false when that fails, which the user is told.
bool storeOption(const Platform& platform, std::string_view applicationFolder, Option option,
                 std::int32_t value);

// Switches on what is advisable, once the user has agreed to what that changes.
void takeAdvice(const Platform& platform, std::string_view applicationFolder);

}  // namespace kalvo
