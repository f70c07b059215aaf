// The pages of a Jet file, and the rows on its data pages.
//
//   data page:  01, ?, free space (2), owner (4), [Jet 4: ? (4)], number of rows (2),
//               offset (2) of each row, free space, ..., row 1, row 0
//
// Rows fill the page from its end; each ends where the one before begins. The owner is
// the page of the table's definition, or "LVAL" for long values. Flags in an offset:
//   0x4000  the row is a pointer to where the row went when it grew
//   0x8000  not a row of its own: the place such a pointer leads to
//   both    deleted
#pragma once

#include <cstddef>
#include <string>

#include "platform/jet/jet_bytes.h"
#include "platform/jet/jet_format.h"

namespace kalvo {

struct JetSlot {
    std::size_t offset = 0;
    bool moved = false;
    bool hidden = false;
};

// Views it gives live as long as it does. Everything throws JetFault.
class JetPages {
public:
    // `bytes` is a whole file of kJet3 or kJet4.
    JetPages(std::string bytes, JetVersion version);
    JetPages(const JetPages&) = delete;
    JetPages& operator=(const JetPages&) = delete;

    [[nodiscard]] JetVersion version() const { return version_; }
    [[nodiscard]] const JetFormat& format() const { return format_; }
    [[nodiscard]] std::size_t count() const { return bytes_.size() / format_.pageSize; }
    [[nodiscard]] JetBytes page(std::size_t number) const;

    // A page that must be of this type.
    [[nodiscard]] JetBytes page(std::size_t number, JetPageType type) const;

    // The rows of a data page.
    [[nodiscard]] std::size_t rowCount(JetBytes dataPage) const;
    [[nodiscard]] JetSlot slot(JetBytes dataPage, std::size_t row) const;

    // The content of a row; of a moved one, of where it went. All of them together are
    // no more than the file's bytes: overlapping rows cannot make a small file endless.
    [[nodiscard]] JetBytes row(JetBytes dataPage, std::size_t row);
    [[nodiscard]] JetBytes rowAt(std::uint32_t pointer);

private:
    [[nodiscard]] JetBytes rowInPlace(JetBytes dataPage, std::size_t row);

    std::string bytes_;
    JetVersion version_;
    const JetFormat& format_;
    std::size_t taken_ = 0;
};

[[nodiscard]] inline bool isJetPage(JetBytes page, JetPageType type) {
    return page.u8(0) == static_cast<std::uint8_t>(type);
}

}  // namespace kalvo
