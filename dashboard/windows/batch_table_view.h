// The list of batches as a model of the toolkit.
#pragma once

#include <QAbstractTableModel>

#include "dashboard/batch_list.h"

namespace kalvo {

class BatchTable : public QAbstractTableModel {
public:
    explicit BatchTable(const BatchList& list) : list_(list) {}

    // Changes the list between what the toolkit wants to hear before and after.
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

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    const BatchList& list_;
};

}  // namespace kalvo
