#include "platform/jet/jet_text.h"

#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kCompressed = "\xFF\xFE";

// Halves of the pairs that stand for characters past 16 bits, which no scenario holds.
char32_t withoutSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xE000 ? char32_t{0xFFFD} : unit;
}

std::string fromUtf16(JetBytes stored) {
    std::string utf8;
    for (std::size_t at = 0; at < stored.size(); at += 2)
        appendUtf8(utf8, withoutSurrogate(stored.u16(at)));
    return utf8;
}

std::string fromCompressed(JetBytes stored) {
    std::string utf8;
    bool oneByte = true;
    for (std::size_t at = 0; at < stored.size();) {
        if (stored.u8(at) == 0) {
            oneByte = !oneByte;
            ++at;
        } else if (oneByte) {
            appendUtf8(utf8, stored.u8(at++));
        } else {
            appendUtf8(utf8, withoutSurrogate(stored.u16(at)));
            at += 2;
        }
    }
    return utf8;
}

std::string wholeText(JetBytes stored, JetVersion version) {
    if (version == JetVersion::kJet3) return toUtf8(stored.text());
    if (stored.text().starts_with(kCompressed))
        return fromCompressed(stored.from(kCompressed.size()));
    return fromUtf16(stored);
}

}  // namespace

std::string jetText(JetBytes stored, JetVersion version) {
    const std::string utf8 = wholeText(stored, version);
    return utf8.substr(0, utf8.find('\0'));
}

}  // namespace kalvo
