#include "platform/sqlite/statement_text.h"

#include <sqlite3.h>

#include <cstddef>

#include "platform/sqlite/sqlite_error.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool isNameCharacter(char c) {
    return isDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

// The quote that closes what `c` opens; NUL when it opens nothing.
constexpr char closingQuote(char c) {
    if (c == '[') return ']';
    return c == '\'' || c == '"' || c == '`' ? c : '\0';
}

class Scanner {
public:
    explicit Scanner(std::string_view statement) : sql_(statement) {}

    std::string run() {
        while (at_ < sql_.size() && sql_[at_] != ';') {
            if (closingQuote(peek()) != '\0')
                copyQuoted();
            else if (isDigit(peek()))
                copyNumber();
            else if (isNameCharacter(peek()))
                copyName();
            else
                copyOperator();
        }
        if (at_ < sql_.size() && sql_.find_first_not_of(kBlanks, at_ + 1) != sql_.npos)
            throw syntaxError(sql_);
        return result_;
    }

private:
    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < sql_.size() ? sql_[at_ + ahead] : '\0';
    }

    void copy(std::size_t count) {
        result_.append(sql_.substr(at_, count));
        at_ += count;
    }

    // A doubled quote reads as two quoted texts side by side, which copies the same.
    void copyQuoted() {
        const auto end = sql_.find(closingQuote(peek()), at_ + 1);
        const auto quoted = sql_.substr(at_, end - at_);
        if (end == std::string_view::npos || quoted.find('\0') != std::string_view::npos)
            throw syntaxError(sql_);
        copy(quoted.size() + 1);
    }

    void copyDigits() {
        while (isDigit(peek())) copy(1);
    }

    void copyNumber() {
        copyDigits();
        if (peek() == '.') {
            copy(1);
            copyDigits();
        }
        const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 1 : 0;
        if (foldCase(peek()) == 'e' && isDigit(peek(1 + sign))) {
            copy(1 + sign);
            copyDigits();
        }
        const std::string_view word = sql_.substr(at_, nameLength());
        if (sqlite3_keyword_check(word.data(), static_cast<int>(word.size())) != 0)
            result_.push_back(' ');
        copy(word.size());
    }

    [[nodiscard]] std::size_t nameLength() const {
        std::size_t length = 0;
        while (isNameCharacter(peek(length))) ++length;
        return length;
    }

    void copyName() { copy(nameLength()); }

    void copyOperator() {
        if (peek() == '\0') throw syntaxError(sql_);
        const bool opensComment =
            (peek() == '-' && peek(1) == '-') || (peek() == '/' && peek(1) == '*');
        copy(1);
        if (opensComment) result_.push_back(' ');
    }

    std::string_view sql_;
    std::size_t at_ = 0;
    std::string result_;
};

}  // namespace

std::string engineStatement(std::string_view statement) { return toUtf8(Scanner(statement).run()); }

}  // namespace kalvo
