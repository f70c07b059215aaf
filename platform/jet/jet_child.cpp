#include "platform/jet/jet_child.h"

#include <mdbtools.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/jet/jet_error.h"
#include "platform/sqlite/database_path.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

struct Deleter {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
    void operator()(char* text) const { g_free(text); }
};
using Handle = std::unique_ptr<MdbHandle, Deleter>;
using Table = std::unique_ptr<MdbTableDef, Deleter>;
using LibraryText = std::unique_ptr<char, Deleter>;

// The library gives texts in buffers of this size, cut if need be.
constexpr std::size_t kTextBuffer = 256 * std::size_t{1024};

// Where a row stands on its page; the bits above are flags.
constexpr int kRowOffsetMask = 0x1FFF;

bool isNamed(const char* utf8, std::string_view name) {
    return equalIgnoringCase(fromUtf8(utf8), name);
}

template <typename T>
T* element(const GPtrArray* array, std::size_t index) {
    return static_cast<T*>(array->pdata[index]);
}

class JetFile {
public:
    explicit JetFile(const std::filesystem::path& file) : name_(shownName(file)) {
        handle_.reset(mdb_open(file.c_str(), MDB_NOFLAGS));
        if (!handle_ || mdb_read_catalog(handle_.get(), MDB_TABLE) == nullptr)
            throw jetDamaged(name_);
        mdb_set_bind_size(handle_.get(), kTextBuffer);
    }

    void sendTable(const TableDescription& wanted, JetStreamWriter& stream) {
        const Table table = openTable(wanted.name);
        const auto columns = findColumns(*table, wanted);
        unsigned rows = 0;
        mdb_rewind_table(table.get());
        for (; mdb_fetch_row(table.get()) != 0; ++rows) sendRow(*table, columns, stream);
        if (rows < table->num_rows)
            throw jetDamaged(name_, std::string("la table « "_ansi)
                                        .append(wanted.name)
                                        .append(" » annonce "_ansi)
                                        .append(std::to_string(table->num_rows))
                                        .append(" lignes, dont "_ansi)
                                        .append(std::to_string(rows))
                                        .append(" lisibles"_ansi));
        stream.endTable();
    }

private:
    Table openTable(std::string_view name) {
        for (unsigned i = 0; i < handle_->num_catalog; ++i) {
            auto* entry = element<MdbCatalogEntry>(handle_->catalog, i);
            if (entry->object_type != MDB_TABLE || !isNamed(entry->object_name, name)) continue;
            Table table(mdb_read_table(entry));
            if (!table || mdb_read_columns(table.get()) == nullptr ||
                table->columns->len != table->num_cols)
                throw jetDamaged(name_);
            return table;
        }
        throw jetTableMissing(name);
    }

    static std::vector<std::size_t> findColumns(const MdbTableDef& table,
                                                const TableDescription& wanted) {
        std::vector<std::size_t> columns;
        for (const std::string_view name : wanted.columns) {
            std::size_t at = 0;
            while (at < table.num_cols &&
                   !isNamed(element<MdbColumn>(table.columns, at)->name, name))
                ++at;
            if (at == table.num_cols) throw jetColumnMissing(wanted.name, name);
            columns.push_back(at);
        }
        return columns;
    }

    // Fetching a row leaves its page in the handle; the row is taken apart again here
    // because the library's own binding gives one result for Null and the empty text.
    void sendRow(MdbTableDef& table, const std::vector<std::size_t>& columns,
                 JetStreamWriter& stream) {
        int start = 0;
        std::size_t size = 0;
        std::vector<MdbField> fields(table.num_cols);
        if (mdb_find_row(handle_.get(), static_cast<int>(table.cur_row) - 1, &start, &size) != 0 ||
            mdb_crack_row(&table, start & kRowOffsetMask, size, fields.data()) < 0)
            throw jetDamaged(name_);
        stream.beginRow();
        for (const std::size_t column : columns)
            stream.value(value(*element<MdbColumn>(table.columns, column), fields[column]));
    }

    JetValue value(const MdbColumn& column, const MdbField& field) {
        const bool isNull = field.is_null != 0;
        // The null bit of a yes/no column is its value.
        if (column.col_type == MDB_BOOL) return isNull ? "0" : "-1";
        if (isNull) return std::nullopt;
        if (field.siz == 0) return "";
        const LibraryText text(column.col_type == MDB_NUMERIC
                                   ? mdb_numeric_to_string(handle_.get(), field.start,
                                                           column.col_scale, column.col_prec)
                                   : mdb_col_to_string(handle_.get(), handle_->pg_buf, field.start,
                                                       column.col_type, field.siz));
        if (!text) throw jetDamaged(name_);
        std::string result(text.get());
        if (result.size() + 1 >= kTextBuffer) throw jetDamaged(name_, "texte trop long"_ansi);
        return result;
    }

    std::string name_;
    Handle handle_;
};

}  // namespace

void streamJetTables(const std::filesystem::path& file, JetStreamWriter& stream) {
    try {
        JetFile jet(file);
        for (const TableDescription& table : kScenarioTables) jet.sendTable(table, stream);
        stream.done();
    } catch (const RuntimeError& error) {
        stream.failed(error);
    }
}

}  // namespace kalvo
