// A Jet database of any content gives rows, no more of them than it can hold, or one of
// three run-time errors.
#include "platform/jet/jet_tables.h"
#include "tests/fuzz/fuzz_property.h"
#include "text/runtime_error.h"

namespace kalvo {
namespace {

// A byte gives at most a few characters, to each of the wanted columns.
constexpr std::size_t kMostOfAByte = 4 * kScenarioColumns.size();

std::size_t charactersOf(const JetTables& tables) {
    std::size_t characters = 0;
    for (const auto& table : tables)
        for (const JetRow& row : table)
            for (const JetValue& value : row) characters += value.value_or("").size();
    return characters;
}

}  // namespace

void fuzz(FuzzInput& input) {
    const std::string content = input.rest();
    try {
        const JetTables tables = readJetTables(content, "fuzz.mdb");
        require(charactersOf(tables) <= kMostOfAByte * content.size(),
                "no more than the file holds");
    } catch (const RuntimeError& error) {
        require(error.number() == 3343 || error.number() == 3078 || error.number() == 3265,
                "an error of a database that cannot be read");
        require(!error.description().empty(), "an error with a text");
    }
}

}  // namespace kalvo
