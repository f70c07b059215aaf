#include "platform/jet/jet_catalog.h"

#include "platform/jet/jet_rows.h"
#include "platform/jet/jet_text.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::uint16_t kTable = 1;
constexpr std::uint32_t kPageMask = 0xFFFFFF;

const JetColumn& catalogColumn(const JetTable& catalog, std::string_view name) {
    const JetColumn* column = findColumn(catalog, name);
    if (column == nullptr) throw JetFault{};
    return *column;
}

}  // namespace

JetCatalog::JetCatalog(JetPages& pages) {
    const JetTable catalog = readJetTable(pages, kJetCatalogPage);
    const JetColumn& nameColumn = catalogColumn(catalog, "Name");
    const JetColumn& typeColumn = catalogColumn(catalog, "Type");
    const JetColumn& idColumn = catalogColumn(catalog, "Id");
    forEachRow(pages, catalog, [&](const JetRecord& object) {
        const auto name = object.field(nameColumn);
        const auto type = object.field(typeColumn);
        const auto id = object.field(idColumn);
        if (!name || !type || !id || type->u16(0) != kTable) return;
        tables_.push_back({fromUtf8(jetText(*name, pages.version())), id->u32(0) & kPageMask});
    });
}

std::optional<std::size_t> JetCatalog::findTable(std::string_view name) const {
    for (const Entry& table : tables_)
        if (equalIgnoringCase(table.name, name)) return table.page;
    return std::nullopt;
}

}  // namespace kalvo
