// The entries of Applications.ini as a model of the toolkit.
#pragma once

#include "dashboard/application_desk.h"
#include "dashboard/windows/row_table_view.h"

namespace kalvo {

class ApplicationTable : public RowTable {
public:
    explicit ApplicationTable(const ApplicationDesk& desk) : desk_(desk) {}

    // Entries about the application typed into last are bold.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

protected:
    [[nodiscard]] std::size_t rows() const override { return desk_.rows().size(); }
    [[nodiscard]] int columns() const override { return kApplicationColumns; }
    [[nodiscard]] QString heading(int column) const override;

private:
    const ApplicationDesk& desk_;
};

}  // namespace kalvo
