#include "dashboard/windows/line_table_view.h"

#include <array>
#include <cstddef>

#include "core/reception/line_tap.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr std::array<const char*, LineTable::kColumns> kHeadings = {"Heure", "Sens", "Texte",
                                                                    "Octets"};
constexpr std::array<const char*, 3> kDirections = {"reçu", "envoyé", ""};
constexpr std::size_t kDate = 11;  // characters of a time before its hour

}  // namespace

void LineTable::append(const std::vector<LineEvent>& events) {
    if (events.empty()) return;
    const auto sum = events_.size() + events.size();
    const auto old = std::min(sum - std::min(sum, LineTap::kMost), events_.size());
    if (old > 0) {
        beginRemoveRows({}, 0, static_cast<int>(old) - 1);
        events_.erase(events_.begin(), events_.begin() + static_cast<std::ptrdiff_t>(old));
        endRemoveRows();
    }
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(events.size()) - 1);
    events_.insert(events_.end(), events.begin(), events.end());
    endInsertRows();
}

QVariant LineTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    const LineEvent& event = events_.at(static_cast<std::size_t>(index.row()));
    switch (index.column()) {
        case kTime: return toQString(timeOf(event).substr(kDate));
        case kSign: return kDirections.at(static_cast<std::size_t>(event.kind));
        case kText: return toQString(visibleText(event.bytes));
        default:
            return event.kind == LineEventKind::kNote ? QString() : toQString(hexOf(event.bytes));
    }
}

QString LineTable::heading(int column) const {
    return {kHeadings.at(static_cast<std::size_t>(column))};
}

}  // namespace kalvo
