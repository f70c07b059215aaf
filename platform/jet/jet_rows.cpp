#include "platform/jet/jet_rows.h"

#include <cstddef>
#include <vector>

namespace kalvo {

namespace {

constexpr std::size_t kOwner = 4;
constexpr std::size_t kMapPageHeader = 4;

// Adds those of the pages from `first` on whose bit is set.
void addPages(std::vector<std::size_t>& found, JetBytes bits, std::size_t first,
              const JetPages& pages) {
    for (std::size_t bit = 0; bit < 8 * bits.size() && first + bit < pages.count(); ++bit)
        if ((bits.u8(bit / 8) >> (bit % 8) & 1U) != 0) found.push_back(first + bit);
}

// The same by the numbers of the pages that hold the bits.
void addPagesOfMaps(std::vector<std::size_t>& found, JetBytes maps, const JetPages& pages) {
    const std::size_t pagesEach = 8 * (pages.format().pageSize - kMapPageHeader);
    for (std::size_t i = 0; 4 * i < maps.size() && i * pagesEach < pages.count(); ++i) {
        const std::size_t number = maps.u32(4 * i);
        if (number == 0) continue;
        const JetBytes map = pages.page(number, JetPageType::kUsageMap);
        addPages(found, map.from(kMapPageHeader), i * pagesEach, pages);
    }
}

// The table's pages in ascending order, each once, all of them in the file.
std::vector<std::size_t> mappedPages(JetPages& pages, const JetTable& table) {
    std::vector<std::size_t> found;
    const JetBytes map = pages.rowAt(table.usageMap);
    const JetBytes content = map.from(1);
    switch (map.u8(0)) {
        case 0: addPages(found, content.from(4), content.u32(0), pages); break;
        case 1: addPagesOfMaps(found, content, pages); break;
        default: throw JetFault{};
    }
    return found;
}

bool isOwnedBy(const JetTable& table, JetBytes page) {
    return isJetPage(page, JetPageType::kData) && page.u32(kOwner) == table.page;
}

}  // namespace

void forEachRow(JetPages& pages, const JetTable& table,
                const std::function<void(const JetRecord&)>& use) {
    for (const std::size_t number : mappedPages(pages, table)) {
        const JetBytes page = pages.page(number);
        if (!isOwnedBy(table, page)) continue;
        for (std::size_t row = 0; row < pages.rowCount(page); ++row)
            if (!pages.slot(page, row).hidden)
                use(JetRecord(pages.row(page, row), table, pages.format()));
    }
}

}  // namespace kalvo
