// Going through the rows of a table of a Jet file. Which pages are its own says its usage
// map, a row somewhere in the file:
//
//   00, first page (4), a bit for each page from there on, lowest bit first
//   01, number of a map page or 0 (4), ...   for larger tables
//
//   map page:   05, ?, ? (2), a bit for each page; the pages of the second map page
//               follow those of the first, and so on
#pragma once

#include <functional>

#include "platform/jet/jet_record.h"

namespace kalvo {

// Calls `use` with each row, in the file's order.
void forEachRow(JetPages& pages, const JetTable& table,
                const std::function<void(const JetRecord&)>& use);

}  // namespace kalvo
