#include "text/line_capture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::array<char, 3> kSigns = {'<', '>', '='};
constexpr std::string_view kHex = "0123456789ABCDEF";
constexpr std::string_view kTimeForm = "0000-00-00 00:00:00.000";

void appendPadded(std::string& text, std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    text.append(width - std::min(width, digits.size()), '0').append(digits);
}

void appendHex(std::string& text, char byte) {
    const auto code = static_cast<unsigned char>(byte);
    text.append(1, kHex[code >> 4U]).append(1, kHex[code & 15U]);
}

// Nothing unless the text begins with a time.
std::optional<std::int64_t> readTime(std::string_view text) {
    if (text.size() < kTimeForm.size()) return std::nullopt;
    std::array<int, 7> parts{};
    std::size_t part = 0;
    for (std::size_t i = 0; i < kTimeForm.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (kTimeForm[i] != '0') {
            if (text[i] != kTimeForm[i]) return std::nullopt;
            ++part;
        } else if (digit) {
            parts.at(part) = parts.at(part) * 10 + (text[i] - '0');
        } else {
            return std::nullopt;
        }
    }
    using namespace std::chrono;
    const year_month_day day{year(parts[0]), month(static_cast<unsigned>(parts[1])),
                             std::chrono::day(static_cast<unsigned>(parts[2]))};
    if (!day.ok()) return std::nullopt;
    const milliseconds time = sys_days(day).time_since_epoch() + hours(parts[3]) +
                              minutes(parts[4]) + seconds(parts[5]) + milliseconds(parts[6]);
    return time.count();
}

// Pairs of hexadecimal digits up to two blanks or the end; nothing for any other text.
std::optional<std::string> readHex(std::string_view text) {
    text = text.substr(0, text.find("  "));
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); at += 3) {
        unsigned code = 0;
        const char* const begin = text.data() + at;
        const char* const end = text.data() + std::min(at + 2, text.size());
        const auto read = std::from_chars(begin, end, code, 16);
        const bool parted = at + 2 >= text.size() || text[at + 2] == ' ';
        if (read.ec != std::errc{} || read.ptr != begin + 2 || !parted) return std::nullopt;
        bytes += static_cast<char>(code);
    }
    return bytes;
}

std::optional<LineEvent> readEvent(std::string_view line) {
    const auto time = readTime(line);
    if (!time || line.size() < kTimeForm.size() + 3) return std::nullopt;
    const std::string_view rest = line.substr(kTimeForm.size());
    const std::string_view content = rest.substr(3);
    if (rest[0] != ' ' || rest[2] != ' ') return std::nullopt;
    for (std::size_t kind = 0; kind < kSigns.size(); ++kind) {
        if (rest[1] != kSigns.at(kind)) continue;
        LineEvent event{*time, static_cast<LineEventKind>(kind), fromUtf8(content)};
        if (event.kind == LineEventKind::kNote) return event;
        const auto bytes = readHex(content);
        if (!bytes) return std::nullopt;
        event.bytes = *bytes;
        return event;
    }
    return std::nullopt;
}

}  // namespace

std::string timeOf(const LineEvent& event) {
    using namespace std::chrono;
    const sys_time<milliseconds> time{milliseconds(event.time)};
    const auto midnight = floor<days>(time);
    const year_month_day day(midnight);
    const hh_mm_ss clock(time - midnight);
    std::string text;
    appendPadded(text, static_cast<int>(day.year()), 4);
    appendPadded(text += '-', static_cast<unsigned>(day.month()), 2);
    appendPadded(text += '-', static_cast<unsigned>(day.day()), 2);
    appendPadded(text += ' ', clock.hours().count(), 2);
    appendPadded(text += ':', clock.minutes().count(), 2);
    appendPadded(text += ':', clock.seconds().count(), 2);
    appendPadded(text += '.', clock.subseconds().count(), 3);
    return text;
}

char signOf(LineEventKind kind) { return kSigns.at(static_cast<std::size_t>(kind)); }

std::string hexOf(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) text += ' ';
        appendHex(text, byte);
    }
    return text;
}

std::string visibleText(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code >= 0x20 && code != 0x7F) {
            text += byte;
            continue;
        }
        text += '<';
        appendHex(text, byte);
        text += '>';
    }
    return text;
}

std::string captureText(std::span<const LineEvent> events) {
    std::string text = "# KALVO Horizon : < reçu, > envoyé, = événement\n";
    for (const LineEvent& event : events) {
        text.append(timeOf(event)).append(1, ' ').append(1, signOf(event.kind)).append(1, ' ');
        if (event.kind == LineEventKind::kNote)
            text += toUtf8(visibleText(event.bytes));
        else
            text += hexOf(event.bytes) + "  |" + toUtf8(visibleText(event.bytes)) + "|";
        text += '\n';
    }
    return text;
}

std::vector<LineEvent> parseCapture(std::string_view utf8) {
    std::vector<LineEvent> events;
    int number = 0;
    while (!utf8.empty()) {
        const std::size_t end = std::min(utf8.find('\n'), utf8.size());
        std::string_view line = utf8.substr(0, end);
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || line.front() == '#') continue;
        const auto event = readEvent(line);
        if (!event)
            throw RuntimeError(error_number::kBadFormat,
                               std::string("La ligne "_ansi) + std::to_string(number) +
                                   std::string(" n'est pas celle d'une capture."_ansi));
        events.push_back(*event);
    }
    return events;
}

}  // namespace kalvo
