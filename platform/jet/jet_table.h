// The definition of a table of a Jet file.
//
//   one page:   02, ?, ? (2), next page of it or 0 (4), content
//   content:    counts and pointers (JetFormat), an entry for each index, an entry for
//               each column, the columns' names in the same order behind their length,
//               the rest of the indexes
//
// The content goes on behind the eight bytes that each further page starts with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/jet/jet_pages.h"

namespace kalvo {

enum class JetType : std::uint8_t {
    kBoolean = 1,
    kByte = 2,
    kInteger = 3,
    kLong = 4,
    kCurrency = 5,
    kSingle = 6,
    kDouble = 7,
    kText = 10,
    kMemo = 12,
};

struct JetColumn {
    std::string name;  // code page 1252
    JetType type{};    // may be another number than those above
    bool fixed = false;
    std::size_t number = 0;         // its bit in a row's mask
    std::size_t offset = 0;         // fixed: among the fixed values
    std::size_t length = 0;         // fixed: bytes of the value
    std::size_t variableIndex = 0;  // not fixed: among the variable values
};

struct JetTable {
    std::size_t page = 0;
    std::size_t rows = 0;  // as announced
    // The most a row has, columns that were removed later included.
    std::size_t maxColumns = 0;
    std::size_t variableColumns = 0;
    std::uint32_t usageMap = 0;  // pointer to the row that says which pages are its own
    std::vector<JetColumn> columns;
};

[[nodiscard]] JetTable readJetTable(const JetPages& pages, std::size_t page);

// The column of this name, whatever its case; nullptr when there is none.
[[nodiscard]] const JetColumn* findColumn(const JetTable& table, std::string_view name);

}  // namespace kalvo
