// The rows of a list and the one that is selected, as a list box keeps them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/ansi_text.h"

namespace kalvo {

// What stands before the stored text in a row for a scenario or a step.
inline constexpr std::string_view kRowPrefix = "--- ";

struct RowList {
    std::vector<std::string> rows;
    int selected = -1;  // -1: none

    [[nodiscard]] int count() const { return static_cast<int>(rows.size()); }

    // The text of a row; empty outside the list.
    [[nodiscard]] std::string at(int row) const {
        return row >= 0 && row < count() ? rows[static_cast<std::size_t>(row)] : std::string();
    }

    void clear() {
        rows.clear();
        selected = -1;
    }

    // Selects the first row of that text, whatever its case; another text leaves
    // the list without selection.
    void select(std::string_view text) {
        selected = -1;
        for (int row = 0; row < count() && selected < 0; ++row)
            if (equalIgnoringCase(at(row), text)) selected = row;
    }

    // Removing the selected row leaves none selected; the selection follows its
    // row when an earlier one goes.
    void remove(int row) {
        if (row < 0 || row >= count()) return;
        rows.erase(rows.begin() + row);
        if (selected == row)
            selected = -1;
        else if (selected > row)
            --selected;
    }

    // The selection keeps its index: what is inserted at it is selected.
    void insert(int row, std::string text) { rows.insert(rows.begin() + row, std::move(text)); }
};

// The stored text of a row: what follows its prefix.
[[nodiscard]] inline std::string rowText(std::string_view row) {
    return row.size() <= kRowPrefix.size() ? std::string()
                                           : std::string(row.substr(kRowPrefix.size()));
}

}  // namespace kalvo
