// The rows of a list for the toolkit's views.
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <string>
#include <vector>

namespace kalvo {

// A row as it is shown.
struct ShownRow {
    QString text;
    bool selectable = true;
    bool greyed = false;
    bool marked = false;  // stands out from the others
    bool movable = false;

    friend bool operator==(const ShownRow&, const ShownRow&) = default;
};

// Texts in code page 1252 as plain rows.
[[nodiscard]] std::vector<ShownRow> plainRows(const std::vector<std::string>& texts);

class RowListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    // Shows other rows. Views keep their place where the rows around it stay the same.
    void setRows(std::vector<ShownRow> rows);
    [[nodiscard]] const std::vector<ShownRow>& rows() const { return rows_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    std::vector<ShownRow> rows_;
};

}  // namespace kalvo
