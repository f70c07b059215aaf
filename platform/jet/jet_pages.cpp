#include "platform/jet/jet_pages.h"

#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr unsigned kMoved = 0x4000;
constexpr unsigned kHidden = 0x8000;
constexpr unsigned kOffsetMask = 0x1FFF;

}  // namespace

JetPages::JetPages(std::string bytes, JetVersion version)
    : bytes_(std::move(bytes)),
      version_(version),
      format_(version == JetVersion::kJet3 ? kJet3Format : kJet4Format) {
    if (bytes_.size() % format_.pageSize != 0) throw JetFault{};
}

JetBytes JetPages::page(std::size_t number) const {
    if (number >= count())
        throw JetFault{std::string("la page "_ansi).append(std::to_string(number)) +
                       std::string(" manque"_ansi)};
    return JetBytes(bytes_).part(number * format_.pageSize, format_.pageSize);
}

JetBytes JetPages::page(std::size_t number, JetPageType type) const {
    const JetBytes found = page(number);
    if (!isJetPage(found, type))
        throw JetFault{std::string("la page "_ansi).append(std::to_string(number)) +
                       std::string(" est d'un autre type qu'attendu"_ansi)};
    return found;
}

std::size_t JetPages::rowCount(JetBytes dataPage) const { return dataPage.u16(format_.pageRows); }

JetSlot JetPages::slot(JetBytes dataPage, std::size_t row) const {
    if (row >= rowCount(dataPage)) throw JetFault{};
    const unsigned entry = dataPage.u16(format_.pageRows + 2 + 2 * row);
    return {entry & kOffsetMask, (entry & kMoved) != 0, (entry & kHidden) != 0};
}

JetBytes JetPages::rowInPlace(JetBytes dataPage, std::size_t row) {
    const std::size_t start = slot(dataPage, row).offset;
    const std::size_t end = row == 0 ? dataPage.size() : slot(dataPage, row - 1).offset;
    if (start > end) throw JetFault{};
    taken_ += end - start;
    if (taken_ > bytes_.size()) throw JetFault{};
    return dataPage.part(start, end - start);
}

JetBytes JetPages::row(JetBytes dataPage, std::size_t row) {
    JetBytes content = rowInPlace(dataPage, row);
    // A pointer takes four bytes each time, so that a ring of them comes to an end.
    while (slot(dataPage, row).moved) {
        const std::uint32_t target = content.u32(0);
        dataPage = page(target >> 8U, JetPageType::kData);
        row = target & 0xFFU;
        content = rowInPlace(dataPage, row);
    }
    return content;
}

JetBytes JetPages::rowAt(std::uint32_t pointer) {
    return row(page(pointer >> 8U, JetPageType::kData), pointer & 0xFFU);
}

}  // namespace kalvo
