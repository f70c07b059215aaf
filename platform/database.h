// The scenario database engine, after the data access objects it stands for.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace kalvo {

// A column value: Null, a whole number, a fractional number or a text (code page
// 1252).
using DatabaseValue = std::variant<std::monostate, std::int64_t, double, std::string>;

// The rows of a query, one at a time. A cursor on the first row, if there is one,
// from the start.
class Recordset {
public:
    virtual ~Recordset() = default;

    // True behind the last row (the property EOF, a name C keeps for itself).
    [[nodiscard]] virtual bool Eof() const = 0;
    // A column of the current row; names ignore case. RuntimeError 3265 for an
    // unknown column, 3021 without a current row.
    [[nodiscard]] virtual DatabaseValue Fields(std::string_view name) const = 0;
    virtual void MoveNext() = 0;
    virtual void Close() = 0;
};

// An open database. Statements are code page 1252, one to a call. RuntimeError
// 3075 for a statement that is not understood, 3078 for an unknown table, 3260
// when another program holds the file, 3027 when it is read-only, 3043 on a disk
// error. What Execute confirmed survives the end of the program.
class Database {
public:
    virtual ~Database() = default;

    // The rows a SELECT yields at this moment: later changes do not alter them.
    [[nodiscard]] virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) = 0;
    virtual void Execute(std::string_view sql) = 0;
    // Runs several statements as one: other programs are kept out from the first on, and
    // an error takes back what was done.
    virtual void Transaction(const std::function<void()>& statements) = 0;
};

class DatabaseEngine {
public:
    virtual ~DatabaseEngine() = default;

    // Opens an existing file (path in code page 1252); RuntimeError 3024 when it
    // is missing, 3343 when it is not a database.
    [[nodiscard]] virtual std::unique_ptr<Database> OpenDatabase(std::string_view path) = 0;

    // Copies a database, whole and as it is at one moment, over whatever file is called
    // `to`, which nobody may have open. That file is the old one or the copy at any time.
    // Errors as above and of a disk.
    virtual void CompactDatabase(std::string_view from, std::string_view to) = 0;
};

}  // namespace kalvo
