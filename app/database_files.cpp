// The database files of the program, the same on every system.
#include "app/system_bindings.h"
#include "platform/jet/jet_import.h"
#include "platform/sqlite/schema.h"

namespace kalvo {

void createScenarioDatabaseFile(std::string_view path) { createScenarioDatabase(path); }

std::optional<JetUpgradeNotice> upgradeJetDatabase(std::string_view path) {
    const auto upgrade = upgradeJetInPlace(path);
    if (!upgrade) return std::nullopt;
    return JetUpgradeNotice{upgrade->keptAs, upgrade->imported.scenarios,
                            upgrade->imported.actions};
}

JetUpgradeNotice importJetFile(std::string_view source, std::string_view target) {
    const JetImportReport report = importJetDatabase(source, target);
    return {"", report.scenarios, report.actions};
}

}  // namespace kalvo
