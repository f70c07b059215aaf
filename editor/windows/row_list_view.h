// How the lists of the controllers appear in the toolkit's own.
#pragma once

#include <QComboBox>
#include <QListWidget>
#include <QString>
#include <functional>

#include "editor/row_list.h"

namespace kalvo {

// A drop-down list under its object name. `choose` is called with the row the user takes.
[[nodiscard]] QComboBox* makeComboBox(const QString& name, const QString& tip,
                                      const std::function<void(int row)>& choose);

// Shows rows and selection without calling `choose`; without selection the box shows
// `unlisted`.
void showRows(QComboBox* box, const RowList& list, const QString& unlisted = {});
void showRows(QListWidget* box, const RowList& list);

// Calls `select` with the row the user selects, -1 for none.
void onSelect(QListWidget* box, const std::function<void(int row)>& select);

// Calls `enter` for a double click on a row and for the Enter key.
void onEnter(QListWidget* box, const std::function<void(int row)>& enter);

}  // namespace kalvo
