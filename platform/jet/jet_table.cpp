#include "platform/jet/jet_table.h"

#include "platform/jet/jet_text.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::size_t kNextPage = 4;
constexpr std::size_t kPageHeader = 8;
constexpr std::uint8_t kFixedFlag = 0x01;

// A table has 255 columns at most, so that its definition ends long before this; one
// whose pages form a ring does not.
constexpr std::size_t kMaxPages = 64;

std::string definitionFrom(const JetPages& pages, std::size_t first) {
    JetBytes page = pages.page(first, JetPageType::kTable);
    std::string definition(page.text());
    for (std::size_t count = 1; page.u32(kNextPage) != 0; ++count) {
        if (count == kMaxPages) throw JetFault{};
        page = pages.page(page.u32(kNextPage), JetPageType::kTable);
        definition.append(page.from(kPageHeader).text());
    }
    return definition;
}

JetColumn columnFrom(JetBytes entry, const JetFormat& format) {
    JetColumn column;
    column.type = static_cast<JetType>(entry.u8(0));
    column.fixed = (entry.u8(format.columnFlags) & kFixedFlag) != 0;
    column.number = entry.u16(format.columnNumber);
    column.offset = entry.u16(format.columnOffset);
    column.length = entry.u16(format.columnLength);
    column.variableIndex = entry.u16(format.columnVariableIndex);
    return column;
}

}  // namespace

JetTable readJetTable(const JetPages& pages, std::size_t page) {
    const JetFormat& format = pages.format();
    const std::string content = definitionFrom(pages, page);
    const JetBytes definition{content};
    JetTable table;
    table.page = page;
    table.rows = definition.u32(format.tableRows);
    table.maxColumns = definition.u16(format.tableMaxColumns);
    table.variableColumns = definition.u16(format.tableVariableColumns);
    table.usageMap = definition.u32(format.tableUsageMap);

    std::size_t at = format.tableEnd + format.indexEntry * definition.u32(format.tableIndexes);
    for (unsigned left = definition.u16(format.tableColumns); left > 0; --left) {
        table.columns.push_back(columnFrom(definition.part(at, format.columnEntry), format));
        at += format.columnEntry;
    }
    for (JetColumn& column : table.columns) {
        const auto length = static_cast<std::size_t>(definition.number(at, format.width));
        at += format.width;
        column.name = fromUtf8(jetText(definition.part(at, length), pages.version()));
        at += length;
    }
    return table;
}

const JetColumn* findColumn(const JetTable& table, std::string_view name) {
    for (const JetColumn& column : table.columns)
        if (equalIgnoringCase(column.name, name)) return &column;
    return nullptr;
}

}  // namespace kalvo
