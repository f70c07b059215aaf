#include "text/file_text.h"

#include <cstddef>
#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LeMark = "\xFF\xFE";
constexpr std::string_view kUtf16BeMark = "\xFE\xFF";

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void appendUtf16Le(std::string& bytes, char32_t unit) {
    bytes.push_back(static_cast<char>(unit & 0xFFU));
    bytes.push_back(static_cast<char>((unit >> 8U) & 0xFFU));
}

void swapBytePairs(std::string& bytes) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
}

}  // namespace

std::string FileText::toAnsi(std::string_view part) const {
    return encoding == FileEncoding::kAnsi ? std::string(part) : fromUtf8(part);
}

std::string FileText::fromAnsi(std::string_view ansi) const {
    return encoding == FileEncoding::kAnsi ? std::string(ansi) : toUtf8(ansi);
}

FileText decodeFile(std::string content) {
    if (content.starts_with(kUtf8Mark))
        return {FileEncoding::kUtf8Marked, content.substr(kUtf8Mark.size())};
    if (content.starts_with(kUtf16LeMark))
        return {FileEncoding::kUtf16Le, utf16LeToUtf8(std::string_view(content).substr(2))};
    if (content.starts_with(kUtf16BeMark)) {
        swapBytePairs(content);
        return {FileEncoding::kUtf16Be, utf16LeToUtf8(std::string_view(content).substr(2))};
    }
    return {FileEncoding::kAnsi, std::move(content)};
}

std::string encodeFile(FileText file) {
    switch (file.encoding) {
        case FileEncoding::kUtf8Marked: return file.text.insert(0, kUtf8Mark);
        case FileEncoding::kUtf16Le: return utf8ToUtf16Le(file.text).insert(0, kUtf16LeMark);
        case FileEncoding::kUtf16Be: {
            std::string bytes = utf8ToUtf16Le(file.text).insert(0, kUtf16LeMark);
            swapBytePairs(bytes);
            return bytes;
        }
        case FileEncoding::kAnsi:
        case FileEncoding::kUtf8: break;
    }
    return std::move(file.text);
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto decoded = ansi_detail::decodeUtf8(text, at);
        if (decoded.codePoint == 0xFFFD && decoded.length == 1) return false;
        at += decoded.length;
    }
    return true;
}

std::string utf16LeToUtf8(std::string_view bytes) {
    const auto unitAt = [&](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]) |
                                     (static_cast<unsigned char>(bytes[at + 1]) << 8U));
    };
    std::string utf8;
    utf8.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t codePoint = unitAt(at);
        if (isHighSurrogate(codePoint) && at + 3 < bytes.size() && isLowSurrogate(unitAt(at + 2))) {
            at += 2;
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10U) + (unitAt(at) - 0xDC00);
        }
        appendUtf8(utf8, codePoint);
    }
    return utf8;
}

std::string utf8ToUtf16Le(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size() * 2);
    for (std::size_t at = 0; at < utf8.size();) {
        const auto decoded = ansi_detail::decodeUtf8(utf8, at);
        at += decoded.length;
        if (decoded.codePoint >= 0x10000) {
            appendUtf16Le(bytes, 0xD800 + ((decoded.codePoint - 0x10000) >> 10U));
            appendUtf16Le(bytes, 0xDC00 + ((decoded.codePoint - 0x10000) & 0x3FFU));
        } else {
            appendUtf16Le(bytes, decoded.codePoint);
        }
    }
    return bytes;
}

}  // namespace kalvo
