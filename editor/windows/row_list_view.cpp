#include "editor/windows/row_list_view.h"

#include <QShortcut>
#include <QSignalBlocker>

#include "platform/qt/qt_text.h"

namespace kalvo {

QComboBox* makeComboBox(const QString& name, const QString& tip,
                        const std::function<void(int row)>& choose) {
    auto* const box = new QComboBox;
    box->setObjectName(name);
    box->setToolTip(tip);
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [choose](int row) { choose(row); });
    return box;
}

void showRows(QComboBox* box, const RowList& list, const QString& unlisted) {
    const QSignalBlocker quiet(box);
    // The toolkit selects the first row when it is given an empty placeholder.
    box->setPlaceholderText(unlisted.isEmpty() ? " " : unlisted);
    bool same = box->count() == list.count();
    for (int row = 0; same && row < list.count(); ++row)
        same = box->itemText(row) == toQString(list.at(row));
    if (!same) {
        box->clear();
        for (const std::string& row : list.rows) box->addItem(toQString(row));
    }
    box->setCurrentIndex(list.selected);
}

void showRows(QListWidget* box, const RowList& list) {
    const QSignalBlocker quiet(box);
    while (box->count() > list.count()) delete box->takeItem(box->count() - 1);
    for (int row = 0; row < list.count(); ++row) {
        const QString text = toQString(list.at(row));
        if (row == box->count())
            box->addItem(text);
        else if (box->item(row)->text() != text)
            box->item(row)->setText(text);
    }
    if (list.selected < 0)
        box->clearSelection();
    else
        box->setCurrentRow(list.selected, QItemSelectionModel::ClearAndSelect);
}

void onSelect(QListWidget* box, const std::function<void(int row)>& select) {
    QObject::connect(box, &QListWidget::itemSelectionChanged, box, [box, select] {
        const auto selected = box->selectedItems();
        select(selected.isEmpty() ? -1 : box->row(selected.front()));
    });
}

void onEnter(QListWidget* box, const std::function<void(int row)>& enter) {
    QObject::connect(box, &QListWidget::doubleClicked, box,
                     [enter](const QModelIndex& index) { enter(index.row()); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        QObject::connect(new QShortcut(key, box, nullptr, nullptr, Qt::WidgetShortcut),
                         &QShortcut::activated, box, [box, enter] {
                             if (box->currentRow() >= 0) enter(box->currentRow());
                         });
}

}  // namespace kalvo
