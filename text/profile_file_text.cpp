#include "text/profile_file_text.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "text/ansi_text.h"
#include "text/file_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kBlanks = " \t\v\f\x1A";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kNewLineEnd = "\r\n";

std::string_view trimmed(std::string_view text) { return trimBlanks(text, kBlanks); }

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// An editor of today saves UTF-8 without a mark; no text of code page 1252 with accents
// happens to be valid UTF-8 with letters we know.
FileText decodeSettings(std::string content) {
    FileText file = decodeFile(std::move(content));
    const bool accents = std::any_of(file.text.begin(), file.text.end(),
                                     [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (file.encoding == FileEncoding::kAnsi && accents && isUtf8(file.text))
        file.encoding = FileEncoding::kUtf8;
    return file;
}

struct Entry {
    std::string_view name;
    std::string_view value;
};

// A line without its end, and where the next one begins.
struct Line {
    std::string_view text;
    std::size_t begin;
    std::size_t next;

    [[nodiscard]] std::optional<std::string_view> sectionName() const {
        const std::string_view line = trimmed(text);
        const std::size_t close = line.find(']');
        if (!line.starts_with('[') || close == std::string_view::npos) return std::nullopt;
        return trimmed(line.substr(1, close - 1));
    }
    [[nodiscard]] std::optional<Entry> entry() const {
        const std::string_view line = trimmed(text);
        const std::size_t equals = line.find('=');
        if (line.starts_with(';') || equals == std::string_view::npos) return std::nullopt;
        return Entry{trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1))};
    }
};

Line lineAt(std::string_view text, std::size_t begin) {
    const std::size_t end = std::min(text.find_first_of(kLineEnds, begin), text.size());
    const bool twoBytes = text.substr(end).starts_with("\r\n");
    const std::size_t next = end == text.size() ? end : end + (twoBytes ? 2 : 1);
    return {text.substr(begin, end - begin), begin, next};
}

// Where a key stands, or would have to.
struct Place {
    bool sectionExists = false;
    std::size_t begin = 0;  // of the section
    std::size_t behindLastEntry = 0;
    Line line{};
    std::optional<Entry> entry;
};

Place locate(const FileText& file, std::string_view section, std::string_view key) {
    const std::string_view wantedSection = trimmed(untilNul(section));
    const std::string_view wantedKey = trimmed(untilNul(key));
    Place place;
    for (std::size_t at = 0; at < file.text.size();) {
        const Line line = lineAt(file.text, at);
        at = line.next;
        if (const auto name = line.sectionName()) {
            if (place.sectionExists) break;
            place.sectionExists = equalIgnoringCase(file.toAnsi(*name), wantedSection);
            place.begin = line.begin;
            place.behindLastEntry = line.next;
        } else if (!place.sectionExists) {
            continue;
        } else if (const auto entry = line.entry()) {
            place.behindLastEntry = line.next;
            if (!equalIgnoringCase(file.toAnsi(entry->name), wantedKey)) continue;
            place.line = line;
            place.entry = entry;
            break;
        }
    }
    return place;
}

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

std::string findProfileValue(std::string content, std::string_view section, std::string_view key) {
    const FileText file = decodeSettings(std::move(content));
    const Place place = locate(file, section, key);
    if (!place.entry) return {};
    return file.toAnsi(untilNul(withoutQuotes(place.entry->value)));
}

std::string withProfileValue(std::string content, std::string_view section, std::string_view key,
                             std::string_view value) {
    FileText file = decodeSettings(std::move(content));
    if (!file.text.empty() && kLineEnds.find(file.text.back()) == std::string_view::npos)
        file.text += kNewLineEnd;

    const Place place = locate(file, section, key);
    const std::string setting = "=" + file.fromAnsi(untilNul(value));
    if (place.entry) {
        const std::string line = std::string(place.entry->name) + setting;
        file.text.replace(place.line.begin, place.line.text.size(), line);
    } else {
        std::string lines =
            file.fromAnsi(trimmed(untilNul(key))) + setting + std::string(kNewLineEnd);
        if (!place.sectionExists)
            lines.insert(0, "[" + file.fromAnsi(trimmed(untilNul(section))) + "]" +
                                std::string(kNewLineEnd));
        file.text.insert(place.sectionExists ? place.behindLastEntry : file.text.size(), lines);
    }
    return encodeFile(std::move(file));
}

std::vector<std::string> profileSections(std::string content) {
    const FileText file = decodeSettings(std::move(content));
    std::vector<std::string> names;
    for (std::size_t at = 0; at < file.text.size();) {
        const Line line = lineAt(file.text, at);
        at = line.next;
        if (const auto name = line.sectionName()) names.push_back(file.toAnsi(*name));
    }
    return names;
}

std::string withoutProfileSection(std::string content, std::string_view section) {
    FileText file = decodeSettings(std::move(content));
    // No key is called like that: the whole section is gone through.
    const Place place = locate(file, section, "=");
    if (place.sectionExists) {
        std::size_t end = place.behindLastEntry;
        while (end < file.text.size() && trimmed(lineAt(file.text, end).text).empty())
            end = lineAt(file.text, end).next;
        file.text.erase(place.begin, end - place.begin);
    }
    return encodeFile(std::move(file));
}

}  // namespace kalvo
