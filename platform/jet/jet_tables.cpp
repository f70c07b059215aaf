#include "platform/jet/jet_tables.h"

#include <fstream>
#include <system_error>
#include <utility>

#include "platform/jet/jet_catalog.h"
#include "platform/jet/jet_error.h"
#include "platform/jet/jet_protection.h"
#include "platform/jet/jet_rows.h"
#include "platform/sqlite/database_path.h"
#include "platform/sqlite/sqlite_error.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// The engine's own limit; nothing larger is a Jet file.
constexpr std::uintmax_t kMaxFile = std::uintmax_t{2} * 1024 * 1024 * 1024;

void refuseUnreadable(std::string_view content, std::string_view name) {
    const JetVersion version = jetVersionOf(content);
    if (version == JetVersion::kNone) throw formatError(name);
    if (version == JetVersion::kNewer) throw jetTooNew(name);
    switch (jetProtectionOf(JetBytes(content), version)) {
        case JetProtection::kNone: return;
        case JetProtection::kEnciphered: throw jetEnciphered(name);
        case JetProtection::kPassword: throw jetPassword(name);
    }
}

std::vector<const JetColumn*> findColumns(const JetTable& table, const TableDescription& wanted) {
    std::vector<const JetColumn*> columns;
    for (const std::string_view name : wanted.columns) {
        columns.push_back(findColumn(table, name));
        if (columns.back() == nullptr) throw jetColumnMissing(wanted.name, name);
    }
    return columns;
}

JetFault rowsMissing(std::string_view table, std::size_t announced, std::size_t found) {
    return {std::string("la table « "_ansi)
                .append(table)
                .append(" » annonce "_ansi)
                .append(std::to_string(announced))
                .append(" lignes, dont "_ansi)
                .append(std::to_string(found))
                .append(" lisibles"_ansi)};
}

std::vector<JetRow> readRows(JetPages& pages, const JetTable& table,
                             const TableDescription& wanted) {
    const auto columns = findColumns(table, wanted);
    std::vector<JetRow> rows;
    forEachRow(pages, table, [&](const JetRecord& record) {
        JetRow& row = rows.emplace_back();
        for (const JetColumn* column : columns) row.push_back(jetValue(pages, record, *column));
    });
    if (rows.size() < table.rows) throw rowsMissing(wanted.name, table.rows, rows.size());
    return rows;
}

JetTables readAll(JetPages& pages) {
    const JetCatalog catalog(pages);
    JetTables tables;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const TableDescription& wanted = kScenarioTables[i];
        const auto page = catalog.findTable(wanted.name);
        if (!page) throw jetTableMissing(wanted.name);
        tables[i] = readRows(pages, readJetTable(pages, *page), wanted);
    }
    return tables;
}

}  // namespace

JetTables readJetTables(std::string content, std::string_view name) {
    try {
        refuseUnreadable(content, name);
        const JetVersion version = jetVersionOf(content);
        JetPages pages(std::move(content), version);
        return readAll(pages);
    } catch (const JetFault& fault) {
        throw jetDamaged(name, fault.detail);
    }
}

JetTables readJetTables(const std::filesystem::path& file) {
    const std::string name = shownName(file);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kMaxFile || jetVersionOfFile(file) == JetVersion::kNone)
        throw formatError(name);
    std::string content(static_cast<std::size_t>(size), '\0');
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(content.data(), static_cast<std::streamsize>(size))) throw jetDamaged(name);
    return readJetTables(std::move(content), name);
}

}  // namespace kalvo
