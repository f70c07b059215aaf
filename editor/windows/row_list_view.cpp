#include "editor/windows/row_list_view.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <utility>

#include "core/during.h"

namespace kalvo {

QComboBox* makeComboBox(const QString& name, const QString& tip,
                        const std::function<void(int row)>& choose) {
    auto* const box = new QComboBox;
    box->setObjectName(name);
    box->setToolTip(tip);
    box->setModel(new RowListModel(box));
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [choose](int row) { choose(row); });
    return box;
}

void showRows(QComboBox* box, const RowList& list, const QString& unlisted) {
    const QSignalBlocker quiet(box);
    // The toolkit selects the first row when it is given an empty placeholder.
    box->setPlaceholderText(unlisted.isEmpty() ? " " : unlisted);
    static_cast<RowListModel*>(box->model())->setRows(plainRows(list.rows));
    box->setCurrentIndex(list.selected);
}

RowListView::RowListView(const QString& name, const QString& tip) {
    setObjectName(name);
    setToolTip(tip);
    setModel(model_);
    connect(this, &QListView::doubleClicked, this,
            [this](const QModelIndex& index) { onEnter(index.row()); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, this, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, this, [this] {
                    if (currentRow() >= 0) onEnter(currentRow());
                });
}

void RowListView::showRows(std::vector<ShownRow> rows, int selected) {
    const During quiet([this](bool on) { showing_ = on; });
    model_->setRows(std::move(rows));
    if (selected < 0) {
        clearSelection();
        return;
    }
    selectionModel()->setCurrentIndex(model_->index(selected), QItemSelectionModel::ClearAndSelect);
}

void RowListView::selectionChanged(const QItemSelection& selected,
                                   const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (showing_) return;
    const QModelIndexList rows = selectedIndexes();
    onSelect(rows.isEmpty() ? -1 : rows.front().row());
}

// A row that has the focus without being selected is selected by the key that leads to it,
// even if that is where the focus is already.
void RowListView::keyPressEvent(QKeyEvent* event) {
    QListView::keyPressEvent(event);
    constexpr std::array<int, 6> kWays = {Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Home,
                                          Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    const bool way = std::find(kWays.begin(), kWays.end(), event->key()) != kWays.end();
    if (way && event->modifiers() == Qt::NoModifier && selectedIndexes().isEmpty() &&
        currentIndex().isValid())
        selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

void RowListView::letsMove() {
    setDragDropMode(InternalMove);
    setDropIndicatorShown(true);
}

// The row goes through its controller, which moves it, or does not.
void RowListView::dropEvent(QDropEvent* event) {
    const QPoint at = event->position().toPoint();
    const QModelIndex under = indexAt(at);
    int to = under.isValid() ? under.row() : model_->rowCount();
    if (under.isValid() && at.y() > visualRect(under).center().y()) ++to;
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    if (event->source() == this && currentRow() >= 0) onMove(currentRow(), to);
}

}  // namespace kalvo
