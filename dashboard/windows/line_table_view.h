// What went over the line as a model of the toolkit.
#pragma once

#include <QAbstractTableModel>
#include <deque>
#include <vector>

#include "text/line_capture.h"

namespace kalvo {

class LineTable : public QAbstractTableModel {
public:
    // Time, direction, text, bytes.
    enum Column { kTime, kSign, kText, kHex, kColumns };

    // Adds what happened; the oldest rows beyond what the tap keeps go.
    void append(const std::vector<LineEvent>& events);

    [[nodiscard]] const std::deque<LineEvent>& events() const { return events_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    std::deque<LineEvent> events_;
};

}  // namespace kalvo
