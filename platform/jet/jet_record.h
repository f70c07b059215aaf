// One row of a table of a Jet file, taken apart. Counts and offsets (JetFormat's width)
// are one byte in Jet 3, two in Jet 4:
//
//   columns (w), fixed values, variable values,
//   [end (w), ..., start of variable value 1 (w), start of variable value 0 (w),
//    Jet 3: carries, variable values (w)]      when the table has variable columns
//   mask
//
// The mask has a bit for each column, lowest bit first: 0 for Null; of a yes/no column
// it is the value. A row written before a column was added lacks it.
// Carries: a one-byte start cannot pass 255, so each 256 bytes of the row add an entry,
// the first one last: from the value it numbers on, starts are 256 more.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/jet/jet_table.h"

namespace kalvo {

class JetRecord {
public:
    JetRecord(JetBytes row, const JetTable& table, const JetFormat& format);

    // The column's bit.
    [[nodiscard]] bool isSet(const JetColumn& column) const;

    // The stored value; nothing for Null.
    [[nodiscard]] std::optional<JetBytes> field(const JetColumn& column) const;

private:
    [[nodiscard]] std::size_t variableStart(std::size_t index) const;
    void checkVariables() const;

    JetBytes row_;
    std::size_t width_;
    std::size_t columns_;
    std::size_t mask_;           // where it starts
    std::size_t variables_ = 0;  // how many
    std::size_t carries_ = 0;    // how many
};

}  // namespace kalvo
