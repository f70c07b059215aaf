// How the lists of the controllers appear in the toolkit's own.
#pragma once

#include <QComboBox>
#include <QListView>
#include <QString>
#include <functional>
#include <vector>

#include "editor/row_list.h"
#include "editor/windows/row_list_model.h"

namespace kalvo {

// A drop-down list under its object name. `choose` is called with the row the user takes.
[[nodiscard]] QComboBox* makeComboBox(const QString& name, const QString& tip,
                                      const std::function<void(int row)>& choose);

// Shows rows and selection without calling `choose`; without selection the box shows
// `unlisted`.
void showRows(QComboBox* box, const RowList& list, const QString& unlisted = {});

// A list under its object name.
class RowListView : public QListView {
public:
    RowListView(const QString& name, const QString& tip);

    // Shows rows and selection (-1: none) without calling onSelect.
    void showRows(std::vector<ShownRow> rows, int selected = -1);

    // Called with the row the user selects, -1 for none.
    std::function<void(int row)> onSelect = [](int) {};
    // Called for a double click on a row and for the Enter key.
    std::function<void(int row)> onEnter = [](int) {};
    // Called when a movable row is dropped before row `to`; letsMove() offers that.
    std::function<void(int row, int to)> onMove = [](int, int) {};
    void letsMove();

    [[nodiscard]] int currentRow() const { return currentIndex().row(); }

protected:
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    RowListModel* model_ = new RowListModel(this);
    bool showing_ = false;
};

}  // namespace kalvo
