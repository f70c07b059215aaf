// The entries of Applications.ini as a model of the toolkit.
#pragma once

#include <QAbstractTableModel>

#include "dashboard/application_desk.h"

namespace kalvo {

class ApplicationTable : public QAbstractTableModel {
public:
    explicit ApplicationTable(const ApplicationDesk& desk) : desk_(desk) {}

    // Changes the entries between what the toolkit wants to hear before and after.
    template <typename Change>
    void change(Change&& change) {
        beginResetModel();
        change();
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    // Entries about the application typed into last are bold.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    const ApplicationDesk& desk_;
};

}  // namespace kalvo
