// Whatever is put into a statement: it stays one statement that does what its beginning
// and its end say, and quoted text arrives as it is.
#include <sqlite3.h>

#include <optional>

#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/statement_text.h"
#include "tests/fuzz/fuzz_property.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

using namespace std::string_view_literals;

SqliteConnection& database() {
    static SqliteConnection connection = [] {
        SqliteConnection opened = SqliteConnection::create(":memory:");
        opened.run("CREATE TABLE T(A); INSERT INTO T VALUES (1),('x'),(NULL)");
        opened.restrictStatements();
        sqlite3_limit(opened.handle(), SQLITE_LIMIT_LENGTH, 100'000);
        // Ends what would run for long.
        sqlite3_progress_handler(
            opened.handle(), 20'000, [](void*) { return 1; }, nullptr);
        return opened;
    }();
    return connection;
}

// The first column of the first row, under its name ("name=text"); nothing without rows
// or when the statement is refused.
std::optional<std::string> ask(const std::string& sql) {
    const int changes = sqlite3_total_changes(database().handle());
    std::optional<std::string> answer;
    try {
        SqliteStatement statement(database(), engineStatement(sql), sql);
        sqlite3_stmt* handle = statement.handle();
        require(sqlite3_stmt_readonly(handle) != 0, "a question only reads");
        if (!statement.step()) return std::nullopt;
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle, 0));
        answer =
            fromUtf8(sqlite3_column_name(handle, 0)) + "=" + fromUtf8(text == nullptr ? "" : text);
    } catch (const RuntimeError&) {
        answer.reset();
    }
    require(sqlite3_total_changes(database().handle()) == changes, "a question changes nothing");
    return answer;
}

std::string quoted(std::string text) {
    for (std::size_t at = text.find('\''); at != std::string::npos; at = text.find('\'', at + 2))
        text.insert(at, 1, '\'');
    return "'" + text + "'";
}

}  // namespace

void fuzz(FuzzInput& input) {
    const std::string text = input.text("\0"sv);
    const std::string name = input.text("]\0"sv);
    const std::string condition = input.text("()"sv);
    const std::string behind = input.text();

    require(ask("SELECT " + quoted(text) + " AS [n" + name + "]") == "n" + name + "=" + text,
            "quoted text arrives as it is");
    require(!ask("SELECT A FROM T WHERE (" + condition + ") AND 0"),
            "a condition does not hide what follows it");
    require(behind.find_first_not_of(" \t\r\n\f") == std::string::npos ||
                !ask("SELECT " + quoted(text) + ";" + behind),
            "one statement at a time");
    static_cast<void>(ask("SELECT " + input.rest()));
}

}  // namespace kalvo
