// Tables whose rows are chosen whole: the view, and what models of them have in common.
#pragma once

#include <QAbstractTableModel>
#include <QString>

class QTableView;

namespace kalvo {

class RowTable : public QAbstractTableModel {
public:
    // Changes the rows between what the toolkit wants to hear before and after.
    template <typename Change>
    void change(Change&& change) {
        beginResetModel();
        try {
            change();
        } catch (...) {
            endResetModel();
            throw;
        }
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const final;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const final;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const final;

protected:
    [[nodiscard]] virtual std::size_t rows() const = 0;
    [[nodiscard]] virtual int columns() const = 0;
    [[nodiscard]] virtual QString heading(int column) const = 0;
};

// A table under its object name. The model must outlive it.
[[nodiscard]] QTableView* makeRowTable(const QString& name, const QString& tip, RowTable& model);

}  // namespace kalvo
