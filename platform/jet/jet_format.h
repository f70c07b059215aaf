// Where things stand in a Jet file. All numbers are little-endian; both versions have
// the same structures, with fields of other widths at other places.
//
//   page 0      header: see jet_signature.h and jet_protection.h
//   page 2      definition of the catalogue, the table MSysObjects
//   other       the first byte says what the page is (JetPageType)
//
//   pointer     to a row: page number (3 bytes) above the row's number on it (1 byte)
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/jet/jet_signature.h"

namespace kalvo {

enum class JetPageType : std::uint8_t { kData = 1, kTable = 2, kUsageMap = 5 };

inline constexpr std::size_t kJetCatalogPage = 2;

// Offsets and sizes in bytes.
struct JetFormat {
    std::size_t pageSize;
    std::size_t width;  // of counts and offsets within rows, and of a name's length

    std::size_t pageRows;  // data page: number of its rows

    // Table definition, from its start.
    std::size_t tableRows;
    std::size_t tableMaxColumns;
    std::size_t tableVariableColumns;
    std::size_t tableColumns;
    std::size_t tableIndexes;
    std::size_t tableUsageMap;
    std::size_t tableEnd;
    std::size_t indexEntry;  // size of what stands between this and the columns, each index

    // Column of a table definition, from its start.
    std::size_t columnNumber;
    std::size_t columnVariableIndex;
    std::size_t columnFlags;
    std::size_t columnOffset;
    std::size_t columnLength;
    std::size_t columnEntry;  // size
};

inline constexpr JetFormat kJet3Format = {.pageSize = jetPageSize(JetVersion::kJet3),
                                          .width = 1,
                                          .pageRows = 8,
                                          .tableRows = 12,
                                          .tableMaxColumns = 21,
                                          .tableVariableColumns = 23,
                                          .tableColumns = 25,
                                          .tableIndexes = 31,
                                          .tableUsageMap = 35,
                                          .tableEnd = 43,
                                          .indexEntry = 8,
                                          .columnNumber = 1,
                                          .columnVariableIndex = 3,
                                          .columnFlags = 13,
                                          .columnOffset = 14,
                                          .columnLength = 16,
                                          .columnEntry = 18};

inline constexpr JetFormat kJet4Format = {.pageSize = jetPageSize(JetVersion::kJet4),
                                          .width = 2,
                                          .pageRows = 12,
                                          .tableRows = 16,
                                          .tableMaxColumns = 41,
                                          .tableVariableColumns = 43,
                                          .tableColumns = 45,
                                          .tableIndexes = 51,
                                          .tableUsageMap = 55,
                                          .tableEnd = 63,
                                          .indexEntry = 12,
                                          .columnNumber = 5,
                                          .columnVariableIndex = 7,
                                          .columnFlags = 15,
                                          .columnOffset = 21,
                                          .columnLength = 23,
                                          .columnEntry = 25};

}  // namespace kalvo
