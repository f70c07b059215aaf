// The engine's handles as objects: a connection to one file, and a statement on it.
// Statements here are UTF-8 and already in the engine's dialect.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace kalvo {

class SqliteConnection {
public:
    // Opens an existing database, completing or undoing what a crash left half-done.
    // RuntimeError 3024 for a missing file, 3343 for one that is not a database
    // (an empty one included), 3260 after two seconds of another program's lock.
    [[nodiscard]] static SqliteConnection open(const std::filesystem::path& file);
    // A database in a file that did not exist.
    [[nodiscard]] static SqliteConnection create(const std::filesystem::path& file);

    // A database of the program's own with a write-ahead log, made where it is missing,
    // readable by its owner only; `schema` is run on it.
    [[nodiscard]] static SqliteConnection openWithLog(const std::filesystem::path& file,
                                                      const char* schema);

    // Runs a statement without result, or several.
    void run(const std::string& statements);

    // From here on refuses (as 3075) what no client of the database interface may do:
    // other files, settings, and transactions that would outlive a statement.
    void restrictStatements();

    [[nodiscard]] sqlite3* handle() const { return handle_.get(); }

private:
    SqliteConnection(const std::filesystem::path& file, int flags, const char* settings);
    void configure(const char* settings);

    struct Closer {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Closer> handle_;
};

class SqliteStatement {
public:
    // RuntimeError 3075 unless it is exactly one statement that can be run;
    // `shown` is the text errors quote (code page 1252).
    SqliteStatement(const SqliteConnection& connection, const std::string& sql,
                    std::string_view shown);

    // Gives parameter `index` (from 1) a text, or Null.
    void bindText(int index, const std::string& utf8);
    void bindNull(int index);
    // A number, a text of code page 1252, or bytes as they are.
    void bind(int index, std::int64_t number);
    void bind(int index, std::string_view ansi);
    void bindBytes(int index, std::string_view bytes);

    // Runs the statement to its end with the parameters that are bound, and readies it for
    // the next time, also after an error.
    void runBound();
    // The same with these parameters.
    template <typename... Values>
    void run(const Values&... values) {
        int index = 0;
        (bind(++index, values), ...);
        runBound();
    }

    // To the next row; false when the statement has run to its end. Without rows
    // this is what executes it, durably once false comes back.
    bool step();
    // Ready to be run again with other parameters.
    void reset();

    [[nodiscard]] sqlite3_stmt* handle() const { return handle_.get(); }

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
    };
    sqlite3* connection_;
    std::string shown_;
    std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

}  // namespace kalvo
