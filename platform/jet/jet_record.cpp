#include "platform/jet/jet_record.h"

namespace kalvo {

JetRecord::JetRecord(JetBytes row, const JetTable& table, const JetFormat& format)
    : row_(row), width_(format.width), columns_(row.number(0, width_)) {
    const std::size_t maskSize = (columns_ + 7) / 8;
    if (columns_ > table.maxColumns || row.size() < width_ + maskSize) throw JetFault{};
    mask_ = row.size() - maskSize;
    if (table.variableColumns == 0) return;
    variables_ = row.number(mask_ - width_, width_);
    if (variables_ > table.variableColumns) throw JetFault{};
    if (width_ == 1) carries_ = (row.size() - 1) / 256;
    checkVariables();
}

bool JetRecord::isSet(const JetColumn& column) const {
    if (column.number >= columns_) return false;
    return (row_.u8(mask_ + column.number / 8) >> (column.number % 8) & 1U) != 0;
}

std::optional<JetBytes> JetRecord::field(const JetColumn& column) const {
    if (!isSet(column)) return std::nullopt;
    if (column.fixed) return row_.part(width_ + column.offset, column.length);
    if (column.variableIndex >= variables_) return std::nullopt;
    const std::size_t start = variableStart(column.variableIndex);
    return row_.part(start, variableStart(column.variableIndex + 1) - start);
}

std::size_t JetRecord::variableStart(std::size_t index) const {
    const std::size_t lastCarry = mask_ - width_;
    // An index too large runs below 0, which is past the end of any row.
    std::size_t start = row_.number(lastCarry - carries_ - width_ * (index + 1), width_);
    for (std::size_t i = 1; i <= carries_; ++i)
        if (row_.u8(lastCarry - i) <= index) start += 256;
    return start;
}

// Also where nobody looks at a value: one wrong offset is reason to doubt the row.
void JetRecord::checkVariables() const {
    std::size_t last = width_;
    for (std::size_t i = 0; i <= variables_; ++i) {
        const std::size_t start = variableStart(i);
        if (start < last || start > mask_) throw JetFault{};
        last = start;
    }
}

}  // namespace kalvo
