#include "dashboard/windows/batch_table_view.h"

#include <cstddef>

#include "platform/qt/qt_text.h"

namespace kalvo {

int BatchTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(list_.rows().size());
}

int BatchTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kBatchColumns;
}

QVariant BatchTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto column = static_cast<BatchColumn>(index.column());
    if (role == Qt::TextAlignmentRole && column == BatchColumn::kNumber)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return toQString(cellOf(list_.rows().at(static_cast<std::size_t>(index.row())), column));
}

QVariant BatchTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return toQString(headingOf(static_cast<BatchColumn>(section)));
}

}  // namespace kalvo
