#include "dashboard/windows/application_table_view.h"

#include <QFont>

#include "platform/qt/qt_text.h"

namespace kalvo {

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

QString ApplicationTable::heading(int column) const { return toQString(headingOf(column)); }

}  // namespace kalvo
