#include "app/application_folder.h"

#include <array>

#include "platform/jet/jet_import.h"
#include "platform/sqlite/schema.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::array<std::string_view, 4> kShippedFiles = {"Touche.ini", "Corres.ini", "TouFic.ini",
                                                           "PortSerie.ini"};

void copyShippedFile(FileSystem& files, std::string_view from, std::string_view to) {
    const std::string content = files.read(from);
    const auto copy = files.create(to);
    copy->write(content);
    copy->close();
}

void bringJetDatabaseIn(Dialogs& dialogs, const std::string& database) {
    const auto upgrade = upgradeJetInPlace(database);
    if (!upgrade) return;
    dialogs.message(
        std::string("La base de scénarios a été reprise de l'ancien format : "_ansi) +
            std::to_string(upgrade->imported.scenarios) + std::string(" scénarios, "_ansi) +
            std::to_string(upgrade->imported.actions) +
            std::string(" actions. L'original est conservé sous "_ansi) + upgrade->keptAs + ".",
        kApplicationTitle, MessageIcon::kInformation);
}

}  // namespace

void prepareApplicationFolder(FileSystem& files, Dialogs& dialogs, std::string_view folder,
                              std::string_view shippedData) {
    for (const std::string_view name : kShippedFiles) {
        const std::string target = inFolder(folder, name);
        if (!shippedData.empty() && !files.fileExists(target))
            copyShippedFile(files, inFolder(shippedData, name), target);
    }
    const std::string scenarios = inFolder(folder, "Scenarios");
    if (!files.folderExists(scenarios)) files.createFolder(scenarios);
    const std::string database = scenarioDatabase(folder);
    if (files.fileExists(database))
        bringJetDatabaseIn(dialogs, database);
    else
        createScenarioDatabase(database);
}

}  // namespace kalvo
