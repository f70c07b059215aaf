// The list of batches as a model of the toolkit.
#pragma once

#include "dashboard/batch_list.h"
#include "dashboard/windows/row_table_view.h"

namespace kalvo {

class BatchTable : public RowTable {
public:
    explicit BatchTable(const BatchList& list) : list_(list) {}

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

protected:
    [[nodiscard]] std::size_t rows() const override { return list_.rows().size(); }
    [[nodiscard]] int columns() const override { return kBatchColumns; }
    [[nodiscard]] QString heading(int column) const override;

private:
    const BatchList& list_;
};

}  // namespace kalvo
