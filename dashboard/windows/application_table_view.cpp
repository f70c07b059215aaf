#include "dashboard/windows/application_table_view.h"

#include <QFont>

#include "platform/qt/qt_text.h"

namespace kalvo {

int ApplicationTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(desk_.rows().size());
}

int ApplicationTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kApplicationColumns;
}

QVariant ApplicationTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::FontRole && desk_.applies(index.row())) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::AccessibleDescriptionRole && desk_.applies(index.row()))
        return "Vaut pour l'application de la dernière saisie";
    if (role != Qt::DisplayRole) return {};
    return toQString(desk_.cellOf(index.row(), index.column()));
}

QVariant ApplicationTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return toQString(headingOf(section));
}

}  // namespace kalvo
