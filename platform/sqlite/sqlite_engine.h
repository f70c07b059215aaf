// The scenario database over SQLite: `Scen.mdb` is an SQLite file under that name.
#pragma once

#include "platform/database.h"

namespace kalvo {

// Texts are UTF-8 in the file and code page 1252 on this side; comparing them
// ignores case, accented letters included. A number keeps its value whatever its
// column was meant to hold. Beyond the errors of the interface: 3061 for a column a
// statement names and the tables do not have, 3022 for a second scenario of one
// number, 3065 for a SELECT given to Execute, 3219 for anything else given to
// OpenRecordset. Another program's lock is waited for up to two seconds. One thread
// at a time; several databases on one file may be open side by side.
class SqliteEngine : public DatabaseEngine {
public:
    // Also RuntimeError 3051 for a file that may not be opened.
    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(std::string_view path) override;
    void CompactDatabase(std::string_view from, std::string_view to) override;
};

}  // namespace kalvo
