#include "app/application_folder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

#include "app/bindings/system_bindings.h"
#include "app/process/process_start.h"
#include "platform/jet/jet_import.h"
#include "platform/sqlite/schema.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/file_error_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::int64_t kYoungest = 60;  // seconds
namespace fs = std::filesystem;

constexpr std::array<std::string_view, 5> kShippedFiles = {
    "Applications.ini", "Touche.ini", "Corres.ini", "TouFic.ini", "PortSerie.ini"};

bool holds(const fs::path& folder, const char* file) {
    std::error_code error;
    return fs::exists(folder / file, error);
}

fs::path chosenFolder(const ProgramFolders& folders, const std::optional<std::string>& appDir) {
    fs::path folder = folders.userData;
    if (appDir)
        folder = (fs::current_path() / nativeFile(*appDir)).lexically_normal();
    else if (holds(folders.executable, "PortSerie.ini") || holds(folders.executable, "Scen.mdb"))
        folder = folders.executable;
    folder.make_preferred();
    if (!folder.has_filename() && folder.has_relative_path()) folder = folder.parent_path();
    return folder;
}

std::string corePath(const fs::path& folder) {
    const std::u8string utf8 = folder.u8string();
    const std::string native(utf8.begin(), utf8.end());
    std::string path = fromUtf8(native);
    if (toUtf8(path) != native) throw unusablePathError(path);
    return path;
}

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
        if (ours || name.find(".mdb.tmp-") != std::string::npos)
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

std::string applicationFolder(const ProgramFolders& folders,
                              const std::optional<std::string>& appDir) {
    const fs::path folder = chosenFolder(folders, appDir);
    std::string path = corePath(folder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder, error)) throw folderNotMadeError(path);
    return path;
}

std::string shippedDataFolder(const ProgramFolders& folders) {
    for (const fs::path& folder : folders.shipped)
        if (holds(folder, "Touche.ini")) return corePath(folder);
    return {};
}

void prepareApplicationFolder(FileSystem& files, Dialogs& dialogs, std::string_view folder,
                              std::string_view shippedData) {
    for (const std::string_view name : kShippedFiles) {
        const std::string target = inFolder(folder, name);
        // An empty one is what a full disk leaves of a first start.
        if (!shippedData.empty() && holdsNothing(files, target))
            copyShippedFile(files, inFolder(shippedData, name), target);
    }
    const std::string scenarios = inFolder(folder, "Scenarios");
    const std::string copies = copiesFolder(folder);
    std::string users = knownSitesFile();
    users.resize(std::min(users.find_last_of("/\\"), users.size()));
    for (const std::string_view place :
         {folder, std::string_view(scenarios), std::string_view(copies), std::string_view(users)})
        removeLeftovers(files, place);
    files.needFolder(scenarios);
    const std::string database = scenarioDatabase(folder);
    if (files.fileExists(database))
        bringJetDatabaseIn(dialogs, database);
    else
        createScenarioDatabase(database);
}

}  // namespace kalvo
