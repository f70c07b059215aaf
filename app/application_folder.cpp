#include "app/application_folder.h"

#include <array>
#include <cstdint>
#include <vector>

#include "platform/jet/jet_import.h"
#include "platform/sqlite/schema.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::int64_t kYoungest = 60;  // seconds

constexpr std::array<std::string_view, 4> kShippedFiles = {"Touche.ini", "Corres.ini", "TouFic.ini",
                                                           "PortSerie.ini"};

void copyShippedFile(FileSystem& files, std::string_view from, std::string_view to) {
    files.replace(to, files.read(from));
}

// What a run that was killed, or a full disk, has left: files that were about to get
// another name. Those of a program that is at work are younger than a minute.
void removeLeftovers(FileSystem& files, std::string_view folder) {
    std::vector<std::string> names;
    resumeNext([&] { names = files.list(folder); });
    for (const std::string& name : names) {
        const bool ours = name.find(".kalvo-") != std::string::npos && name.ends_with(".tmp");
        if (ours || name.starts_with("Scen.mdb.tmp-"))
            resumeNext([&] {
                if (files.ageInSeconds(inFolder(folder, name)) > kYoungest)
                    files.remove(inFolder(folder, name));
            });
    }
}

bool holdsNothing(FileSystem& files, std::string_view file) {
    bool empty = true;
    return !files.fileExists(file) || (resumeNext([&] { empty = files.size(file) == 0; }) && empty);
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
        // An empty one is what a full disk leaves of a first start.
        if (!shippedData.empty() && holdsNothing(files, target))
            copyShippedFile(files, inFolder(shippedData, name), target);
    }
    const std::string scenarios = inFolder(folder, "Scenarios");
    for (const std::string_view place : {folder, std::string_view(scenarios)})
        removeLeftovers(files, place);
    if (!files.folderExists(scenarios)) files.createFolder(scenarios);
    const std::string database = scenarioDatabase(folder);
    if (files.fileExists(database))
        bringJetDatabaseIn(dialogs, database);
    else
        createScenarioDatabase(database);
}

}  // namespace kalvo
