#include "editor/windows/row_list_model.h"

#include <QFont>
#include <utility>

#include "platform/qt/qt_text.h"

namespace kalvo {

std::vector<ShownRow> plainRows(const std::vector<std::string>& texts) {
    std::vector<ShownRow> rows;
    rows.reserve(texts.size());
    for (const std::string& text : texts) rows.push_back({.text = toQString(text)});
    return rows;
}

void RowListModel::setRows(std::vector<ShownRow> rows) {
    const int before = rowCount();
    const int now = static_cast<int>(rows.size());
    if (now < before) {
        beginRemoveRows({}, now, before - 1);
        rows_.resize(rows.size());
        endRemoveRows();
    } else if (now > before) {
        beginInsertRows({}, before, now - 1);
        rows_.insert(rows_.end(), rows.begin() + before, rows.end());
        endInsertRows();
    }
    if (rows == rows_) return;
    rows_ = std::move(rows);
    Q_EMIT dataChanged(index(0), index(now - 1));
}

int RowListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RowListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const ShownRow& row = rows_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole) return row.text;
    if (role == Qt::FontRole && row.marked) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    return {};
}

// Rows are dropped between others, never on one.
Qt::ItemFlags RowListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    const ShownRow& row = rows_[static_cast<std::size_t>(index.row())];
    Qt::ItemFlags flags = Qt::ItemNeverHasChildren;
    if (!row.greyed) flags |= Qt::ItemIsEnabled;
    if (row.selectable && !row.greyed) flags |= Qt::ItemIsSelectable;
    if (row.movable) flags |= Qt::ItemIsDragEnabled;
    return flags;
}

}  // namespace kalvo
