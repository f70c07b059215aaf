// What happened on a serial line, and the file it is kept in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

enum class LineEventKind { kReceived, kSent, kNote };

struct LineEvent {
    std::int64_t time = 0;  // milliseconds of local time since 1970
    LineEventKind kind = LineEventKind::kReceived;
    std::string bytes;  // of a note: its text, code page 1252

    bool operator==(const LineEvent&) const = default;
};

// "2024-03-05 14:07:09.123".
[[nodiscard]] std::string timeOf(const LineEvent& event);
// '<' received, '>' sent, '=' a note.
[[nodiscard]] char signOf(LineEventKind kind);
// "52 45 0D".
[[nodiscard]] std::string hexOf(std::string_view bytes);
// Text with its control characters as "<0D>".
[[nodiscard]] std::string visibleText(std::string_view bytes);

// The file of a capture, UTF-8: a line for each event, with its time, its sign, its bytes and
// the text they are; or the note.
[[nodiscard]] std::string captureText(std::span<const LineEvent> events);

// Reads it back; blank lines and those that begin with "#" do not count. RuntimeError 321
// that names the first line of another form.
[[nodiscard]] std::vector<LineEvent> parseCapture(std::string_view utf8);

}  // namespace kalvo
