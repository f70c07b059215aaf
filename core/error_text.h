// How a run-time error is shown.
#pragma once

#include <string>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// "Erreur N° : ", the number and, in a paragraph of its own, the description.
[[nodiscard]] inline std::string errorText(const RuntimeError& error) {
    return std::string("Erreur N° : "_ansi) + std::to_string(error.number()) + "\r\n\r\n" +
           error.description();
}

}  // namespace kalvo
