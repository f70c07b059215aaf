// Text of the program (code page 1252) as the toolkit wants it, and back.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "text/ansi_text.h"

namespace kalvo {

[[nodiscard]] inline QString toQString(std::string_view ansi) {
    return QString::fromStdString(toUtf8(ansi));
}

// What has no character in code page 1252 becomes '?'.
[[nodiscard]] inline std::string fromQString(const QString& text) {
    return fromUtf8(text.toStdString());
}

}  // namespace kalvo
