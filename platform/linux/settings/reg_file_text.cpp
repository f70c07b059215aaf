#include "platform/linux/settings/reg_file_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/linux/settings/reg_file_value.h"
#include "text/ansi_text.h"
#include "text/file_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kAnsiHeader = "REGEDIT4";
constexpr std::string_view kWideHeader = "Windows Registry Editor";
constexpr std::string_view kCurrentUser = "HKEY_CURRENT_USER\\";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kBlanks = " \t\r\n\x1A";

std::string_view trimmed(std::string_view text) { return trimBlanks(text, kBlanks); }

// A key, a value or a line that is neither, from `begin` up to the next item.
struct Item {
    enum class Kind { kOther, kKey, kDeletedKey, kValue } kind = Kind::kOther;
    std::size_t begin = 0;
    std::size_t next = 0;
    std::string_view name;  // of a value still escaped
    std::string_view data;
};

std::size_t behindLine(std::string_view text, std::size_t at) {
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

// The length of `"name"=` or `@=` at the start of a line; 0 when there is none.
std::size_t valueNameLength(std::string_view line) {
    std::size_t end = 0;
    if (line.starts_with('@')) {
        end = 1;
    } else if (line.starts_with('"')) {
        end = closingRegQuote(line, 1);
        if (end == std::string_view::npos) return 0;
        ++end;
    }
    const std::size_t equals = line.find_first_not_of(" \t", end);
    return end > 0 && equals != std::string_view::npos && line[equals] == '=' ? equals + 1 : 0;
}

bool startsItem(std::string_view line) {
    line = trimmed(line);
    return line.starts_with('[') || valueNameLength(line) > 0;
}

// Behind the last line of a text value whose opening quote stands before `at`. A text
// whose end is missing must not swallow the values behind it: it ends with its line.
std::size_t behindText(std::string_view text, std::size_t at) {
    const std::size_t firstLineEnd = behindLine(text, at);
    std::size_t lineEnd = firstLineEnd;
    for (;;) {
        const std::string_view line = text.substr(at, lineEnd - at);
        if (closingRegQuote(line, 0) != std::string_view::npos) return lineEnd;
        at = lineEnd;
        lineEnd = behindLine(text, at);
        if (at == text.size() || startsItem(text.substr(at, lineEnd - at))) return firstLineEnd;
    }
}

// Behind the last of the lines that a trailing "\" joins.
std::size_t behindJoinedLines(std::string_view text, std::size_t at) {
    std::size_t next = behindLine(text, at);
    while (next < text.size() && trimmed(text.substr(at, next - at)).ends_with('\\') &&
           !startsItem(text.substr(next, behindLine(text, next) - next))) {
        at = next;
        next = behindLine(text, at);
    }
    return next;
}

Item itemAt(std::string_view text, std::size_t begin) {
    Item item;
    item.begin = begin;
    item.next = behindLine(text, begin);
    const std::string_view line = trimmed(text.substr(begin, item.next - begin));
    if (line.starts_with('[') && line.find(']') != std::string_view::npos) {
        const bool isDeleted = line.starts_with("[-");
        const std::size_t start = isDeleted ? 2 : 1;
        item.kind = isDeleted ? Item::Kind::kDeletedKey : Item::Kind::kKey;
        item.name = line.substr(start, line.rfind(']') - start);
    } else if (const std::size_t length = valueNameLength(line); length > 0) {
        item.kind = Item::Kind::kValue;
        const std::string_view name = trimmed(line.substr(0, length - 1));
        item.name = name == "@" ? "" : name.substr(1, name.size() - 2);
        const auto dataAt = static_cast<std::size_t>(line.data() - text.data()) + length;
        const std::size_t first = text.find_first_not_of(" \t", dataAt);
        const bool isText = first != std::string_view::npos && text[first] == '"';
        item.next = isText ? behindText(text, first + 1) : behindJoinedLines(text, dataAt);
        item.data = trimmed(text.substr(dataAt, item.next - dataAt));
    }
    return item;
}

// The path below the current user of a key's name; nothing for other roots.
std::optional<std::string> currentUserPath(const FileText& file, std::string_view key) {
    std::string path = file.toAnsi(trimmed(key)) + "\\";
    if (!equalIgnoringCase(path.substr(0, kCurrentUser.size()), kCurrentUser)) return std::nullopt;
    path.erase(0, kCurrentUser.size());
    while (path.ends_with('\\')) path.pop_back();
    return path;
}

bool isSameOrBelow(std::string_view path, std::string_view key) {
    return key.empty() || equalIgnoringCase(path, key) ||
           (path.size() > key.size() && path[key.size()] == '\\' &&
            equalIgnoringCase(path.substr(0, key.size()), key));
}

struct Place {
    std::optional<std::size_t> behindLastValue;  // set when the key exists
    std::optional<Item> item;                    // the line that counts for the name
    std::optional<RegistryValue> value;          // nothing when that line deletes it
};

bool isWide(const FileText& file) { return !trimmed(file.text).starts_with(kAnsiHeader); }

Place locate(const FileText& file, std::string_view path, std::string_view name) {
    while (path.ends_with('\\')) path.remove_suffix(1);
    const bool wide = isWide(file);
    Place place;
    bool inKey = false;
    for (Item item; item.next < file.text.size();) {
        item = itemAt(file.text, item.next);
        if (item.kind == Item::Kind::kKey || item.kind == Item::Kind::kDeletedKey) {
            const auto key = currentUserPath(file, item.name);
            inKey = item.kind == Item::Kind::kKey && key && equalIgnoringCase(*key, path);
            if (inKey) place.behindLastValue = item.next;
            if (item.kind == Item::Kind::kDeletedKey && key && isSameOrBelow(path, *key))
                place = {};
        } else if (inKey && item.kind == Item::Kind::kValue) {
            place.behindLastValue = item.next;
            if (!equalIgnoringCase(file.toAnsi(unescapedRegText(item.name)), name)) continue;
            auto value = parseRegData(file, item.data, wide);
            if (!value && item.data != "-") continue;
            place.item = item;
            place.value = std::move(value);
        }
    }
    return place;
}

FileText decodeRegFile(std::string content) {
    FileText file = decodeFile(std::move(content));
    if (file.encoding == FileEncoding::kAnsi && trimmed(file.text).starts_with(kWideHeader) &&
        isUtf8(file.text))
        file.encoding = FileEncoding::kUtf8;
    return file;
}

void endLastLine(std::string& text) {
    if (!text.empty() && text.back() != '\n') text += kLineEnd;
}

bool hasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

}  // namespace

std::optional<RegistryValue> findRegistryValue(std::string content, std::string_view path,
                                               std::string_view name) {
    return locate(decodeRegFile(std::move(content)), path, name).value;
}

std::optional<std::string> withRegistryValue(std::string content, std::string_view path,
                                             std::string_view name, const RegistryValue& value) {
    if (hasControl(path) || hasControl(name)) return std::nullopt;
    FileText file = decodeRegFile(std::move(content));
    if (trimmed(file.text).empty())
        file.text = std::string(kAnsiHeader) + std::string(kLineEnd) + std::string(kLineEnd);
    endLastLine(file.text);

    while (path.ends_with('\\')) path.remove_suffix(1);
    std::string line = (name.empty() ? "@" : quotedRegText(file.fromAnsi(name))) + "=" +
                       formatRegData(file, value, isWide(file)) + std::string(kLineEnd);
    const Place place = locate(file, path, name);
    if (place.item) {
        file.text.replace(place.item->begin, place.item->next - place.item->begin, line);
    } else if (place.behindLastValue) {
        file.text.insert(*place.behindLastValue, line);
    } else {
        if (!file.text.ends_with("\n\n") && !file.text.ends_with("\n\r\n")) file.text += kLineEnd;
        file.text += "[" + std::string(kCurrentUser) + file.fromAnsi(path) + "]" +
                     std::string(kLineEnd) + line;
    }
    return encodeFile(std::move(file));
}

std::string withoutRegistryValue(std::string content, std::string_view path,
                                 std::string_view name) {
    FileText file = decodeRegFile(std::move(content));
    for (Place place = locate(file, path, name); place.item; place = locate(file, path, name))
        file.text.erase(place.item->begin, place.item->next - place.item->begin);
    return encodeFile(std::move(file));
}

}  // namespace kalvo
