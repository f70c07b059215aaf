#include "dashboard/windows/row_table_view.h"

#include <QHeaderView>
#include <QTableView>

namespace kalvo {

namespace {

constexpr int kRowMargin = 6;

}  // namespace

int RowTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows());
}

int RowTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns();
}

QVariant RowTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return heading(section);
}

QTableView* makeRowTable(const QString& name, const QString& tip, RowTable& model) {
    auto* const table = new QTableView;
    table->setObjectName(name);
    table->setModel(&model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + kRowMargin);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->setToolTip(tip);
    return table;
}

}  // namespace kalvo
