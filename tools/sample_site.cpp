// sample-site FOLDER: puts a scenario database into a folder, with the scenario
// "Inventaire": type the code, Tab, the quantity, Enter. For the demo and the tests.
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_engine.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"

namespace {

using namespace kalvo;

constexpr std::int16_t kInventaire = 1;

void makeDatabase(const std::string& path) {
    createScenarioDatabase(path);
    const auto database = SqliteEngine().OpenDatabase(path);
    ScenarioRecord scenario;
    scenario.Numero = kInventaire;
    scenario.Nom = "Inventaire";
    scenario.Type = kEmulationType;
    insertScenario(*database, scenario);
    std::int32_t position = 0;
    for (const char* action : {"&CODE", "{TAB}", "&QTY", "{ENTER}"})
        insertAction(*database, kInventaire, ++position, {action, 0});
    updateBoucle(*database, kInventaire, 1);
    updateDepart(*database, kInventaire, 1);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: sample-site FOLDER\n", stderr);
        return 2;
    }
    try {
        makeDatabase(scenarioDatabase(fromUtf8(argv[1])));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "sample-site: %s\n", error.what());
        return 1;
    }
}
