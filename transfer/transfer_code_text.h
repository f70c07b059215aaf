// What the user is told about a result of the portable's library.
#pragma once

#include <string>

#include "platform/multidll.h"

namespace kalvo {

// The library's own text for a code, as its users know it; "Undefined error: 17" for a
// code without one.
[[nodiscard]] std::string transferCodeText(TransferCode code);

}  // namespace kalvo
