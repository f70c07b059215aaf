#include "dashboard/windows/batch_table_view.h"

#include <cstddef>

#include "platform/qt/qt_text.h"

namespace kalvo {

QVariant BatchTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto column = static_cast<BatchColumn>(index.column());
    if (role == Qt::TextAlignmentRole && column == BatchColumn::kNumber)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return toQString(cellOf(list_.rows().at(static_cast<std::size_t>(index.row())), column));
}

QString BatchTable::heading(int column) const {
    return toQString(headingOf(static_cast<BatchColumn>(column)));
}

}  // namespace kalvo
