// A database that knows the answers to the statements a test expects, word for
// word, and writes down what was executed.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/database.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

using Row = std::map<std::string, DatabaseValue>;

class ScriptedRecordset : public Recordset {
public:
    explicit ScriptedRecordset(std::vector<Row> rows) : rows_(std::move(rows)) {}
    [[nodiscard]] bool Eof() const override { return current_ == rows_.size(); }
    [[nodiscard]] DatabaseValue Fields(std::string_view name) const override {
        for (const auto& [column, value] : rows_.at(current_))
            if (equalIgnoringCase(column, name)) return value;
        throw RuntimeError(error_number::kDataUnknownColumn, std::string(name));
    }
    void MoveNext() override { ++current_; }
    void Close() override {}

private:
    std::vector<Row> rows_;
    std::size_t current_ = 0;
};

// One store of answers, whichever connection asks.
class ScriptedDatabase : public DatabaseEngine {
public:
    std::map<std::string, std::vector<Row>> answers;
    std::vector<std::string> executed;
    bool missing = false;
    bool executeFails = false;

    std::unique_ptr<Database> OpenDatabase(std::string_view) override {
        if (missing) throw RuntimeError(error_number::kDataFileNotFound, "Base introuvable");
        return std::make_unique<Connection>(*this);
    }

private:
    class Connection : public Database {
    public:
        explicit Connection(ScriptedDatabase& store) : store_(store) {}
        std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
            const auto found = store_.answers.find(std::string(sql));
            if (found == store_.answers.end())
                return std::make_unique<ScriptedRecordset>(std::vector<Row>{});
            return std::make_unique<ScriptedRecordset>(found->second);
        }
        void Execute(std::string_view sql) override {
            if (store_.executeFails) throw RuntimeError(error_number::kDataReadOnly, "");
            store_.executed.emplace_back(sql);
        }
        void Transaction(const std::function<void()>& statements) override { statements(); }

    private:
        ScriptedDatabase& store_;
    };
};

}  // namespace kalvo::testing
