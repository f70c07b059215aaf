// What went over the line as a model of the toolkit.
#pragma once

#include <deque>
#include <vector>

#include "dashboard/windows/row_table_view.h"
#include "text/line_capture.h"

namespace kalvo {

class LineTable : public RowTable {
public:
    // Time, direction, text, bytes.
    enum Column { kTime, kSign, kText, kHex, kColumns };

    // Adds what happened; the oldest rows beyond what the tap keeps go.
    void append(const std::vector<LineEvent>& events);

    [[nodiscard]] const std::deque<LineEvent>& events() const { return events_; }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

protected:
    [[nodiscard]] std::size_t rows() const override { return events_.size(); }
    [[nodiscard]] int columns() const override { return kColumns; }
    [[nodiscard]] QString heading(int column) const override;

private:
    std::deque<LineEvent> events_;
};

}  // namespace kalvo
