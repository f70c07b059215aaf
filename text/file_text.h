// The text of a settings file, whatever program wrote it: plain code page 1252, or
// Unicode behind a byte order mark.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

enum class FileEncoding { kAnsi, kUtf8, kUtf8Marked, kUtf16Le, kUtf16Be };

// `text` is code page 1252 when the file is kAnsi and UTF-8 otherwise, without the
// mark. Line ends and everything else are as in the file.
struct FileText {
    FileEncoding encoding = FileEncoding::kAnsi;
    std::string text;

    // Between this text and code page 1252.
    [[nodiscard]] std::string toAnsi(std::string_view part) const;
    [[nodiscard]] std::string fromAnsi(std::string_view ansi) const;
};

// Told by the mark; without one the text is taken as kAnsi.
[[nodiscard]] FileText decodeFile(std::string content);

// The content a text stands for: encodeFile(decodeFile(x)) is x, save for half a
// character at the end of UTF-16.
[[nodiscard]] std::string encodeFile(FileText file);

[[nodiscard]] bool isUtf8(std::string_view text);

// UTF-16LE bytes to UTF-8 and back. A lone surrogate survives both ways.
[[nodiscard]] std::string utf16LeToUtf8(std::string_view bytes);
[[nodiscard]] std::string utf8ToUtf16Le(std::string_view utf8);

}  // namespace kalvo
