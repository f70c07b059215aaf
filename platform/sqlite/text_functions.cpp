#include "platform/sqlite/text_functions.h"

#include <cstddef>
#include <string_view>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

// Reads a UTF-8 text one folded code point at a time. What the code page does not
// hold has no case.
class FoldedText {
public:
    explicit FoldedText(std::string_view utf8) : rest_(utf8) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

    char32_t next() {
        const auto decoded = ansi_detail::decodeUtf8(rest_, 0);
        rest_.remove_prefix(decoded.length);
        const char ansi = unicodeToAnsi(decoded.codePoint);
        if (ansiToUnicode(ansi) != decoded.codePoint) return decoded.codePoint;
        return ansiToUnicode(foldCase(ansi));
    }

private:
    std::string_view rest_;
};

int compareFolded(std::string_view left, std::string_view right) {
    FoldedText a(left);
    FoldedText b(right);
    while (!a.atEnd() && !b.atEnd()) {
        const char32_t x = a.next();
        const char32_t y = b.next();
        if (x != y) return x < y ? -1 : 1;
    }
    return static_cast<int>(b.atEnd()) - static_cast<int>(a.atEnd());
}

// "%" stands for any text, "_" for one character. On a mismatch only the last "%"
// is given one character more, so the time is bounded by the product of the lengths.
bool matches(FoldedText pattern, FoldedText text) {
    bool wildcardSeen = false;
    FoldedText patternBehindWildcard = pattern;
    FoldedText textAtWildcard = text;
    for (;;) {
        if (!pattern.atEnd()) {
            const char32_t expected = pattern.next();
            if (expected == U'%') {
                wildcardSeen = true;
                patternBehindWildcard = pattern;
                textAtWildcard = text;
                continue;
            }
            if (!text.atEnd()) {
                const char32_t actual = text.next();
                if (expected == U'_' || expected == actual) continue;
            }
        } else if (text.atEnd()) {
            return true;
        }
        if (!wildcardSeen || textAtWildcard.atEnd()) return false;
        textAtWildcard.next();
        pattern = patternBehindWildcard;
        text = textAtWildcard;
    }
}

int collate(void* /*context*/, int leftSize, const void* left, int rightSize, const void* right) {
    return compareFolded({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                         {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text == nullptr
               ? std::string_view{}
               : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

// The operator hands over the pattern first.
void like(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL ||
        sqlite3_value_type(values[1]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const bool found = matches(FoldedText(textOf(values[0])), FoldedText(textOf(values[1])));
    sqlite3_result_int(context, found ? 1 : 0);
}

}  // namespace

int registerTextFunctions(sqlite3* connection) {
    const int result =
        sqlite3_create_collation(connection, kTextCollation, SQLITE_UTF8, nullptr, collate);
    if (result != SQLITE_OK) return result;
    return sqlite3_create_function(connection, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                   nullptr, like, nullptr, nullptr);
}

}  // namespace kalvo
