#include "dashboard/site_archive.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <tuple>

#include "dashboard/site_copies.h"
#include "platform/database.h"
#include "platform/file_system.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// What stands in the application folder itself, but for the database.
constexpr std::array<std::string_view, 6> kSettings = {
    "PortSerie.ini", "Options.ini", "Applications.ini", "Touche.ini", "Corres.ini", "TouFic.ini"};
constexpr std::string_view kDatabase = "Scen.mdb";
constexpr std::string_view kScenarios = "Scenarios/";
constexpr std::string_view kIni = ".ini";

constexpr std::string_view kPassing = "Scen-echange.kalvo-1.tmp";
constexpr std::string_view kBefore = "Site-avant-import.zip";

constexpr std::uint64_t kMostBytes = 200'000'000;
constexpr std::size_t kMostLines = 25;

bool endsIgnoringCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() &&
           equalIgnoringCase(text.substr(text.size() - end.size()), end);
}

// The name of a file of a site as it is written here; empty for any other.
std::string ownName(std::string_view name) {
    for (const std::string_view known : kSettings)
        if (equalIgnoringCase(name, known)) return std::string(known);
    if (equalIgnoringCase(name, kDatabase)) return std::string(kDatabase);
    const bool scenario = equalIgnoringCase(name.substr(0, kScenarios.size()), kScenarios) &&
                          name.size() > kScenarios.size() + kIni.size() &&
                          endsIgnoringCase(name, kIni);
    if (!scenario) return {};
    const std::string_view title =
        name.substr(kScenarios.size(), name.size() - kScenarios.size() - kIni.size());
    if (!refusalOfName(title).empty()) return {};
    return std::string(kScenarios).append(title).append(kIni);
}

std::string pathOf(std::string_view applicationFolder, std::string_view ownName) {
    if (!ownName.starts_with(kScenarios)) return inFolder(applicationFolder, ownName);
    return scenariosFolder(applicationFolder).append(ownName.substr(kScenarios.size()));
}

// A file among the copies for as long as an exchange needs it.
class PassingFile {
public:
    PassingFile(FileSystem& files, std::string_view applicationFolder)
        : files_(files), path_(inFolder(copiesFolder(applicationFolder), kPassing)) {
        files.needFolder(copiesFolder(applicationFolder));
    }
    PassingFile(const PassingFile&) = delete;
    PassingFile& operator=(const PassingFile&) = delete;
    ~PassingFile() {
        resumeNext([this] { files_.remove(path_); });
    }
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    FileSystem& files_;
    std::string path_;
};

// Scenarios by their names, as values that can be compared.
using Scenario = std::tuple<std::string, std::string, std::vector<std::int16_t>,
                            std::vector<std::pair<std::string, std::int16_t>>>;
using Scenarios = std::map<std::string, Scenario>;

Scenarios scenariosOf(Database& database) {
    Scenarios all;
    for (const std::string& name : scenarioNames(database)) {
        const auto number = findScenario(database, name);
        const auto record = number ? readScenario(database, *number) : std::nullopt;
        if (!record) continue;
        Scenario scenario{record->Type,
                          record->Chemin,
                          {record->Trame, record->Specif, record->Boucle, record->Depart},
                          {}};
        for (std::int16_t at = 1; at <= lastActionPosition(database, *number); ++at)
            if (const auto action = readAction(database, *number, at))
                std::get<3>(scenario).emplace_back(action->Champs, action->PlaceTrame);
        all.emplace(name, std::move(scenario));
    }
    return all;
}

std::vector<std::string> scenarioChanges(const Platform& platform,
                                         std::string_view applicationFolder,
                                         const std::string& content) {
    const PassingFile passing(platform.files, applicationFolder);
    platform.files.replace(passing.path(), content);
    const auto brought = platform.databases.OpenDatabase(passing.path());
    static_cast<void>(readCounter(*brought));
    const Scenarios after = scenariosOf(*brought);
    Scenarios before;
    resumeNext([&] {
        before = scenariosOf(*platform.databases.OpenDatabase(scenarioDatabase(applicationFolder)));
    });
    std::vector<std::string> lines;
    const auto say = [&](const std::string& name, std::string_view what) {
        lines.push_back(std::string("scénario "_ansi) + name + " : " + std::string(what));
    };
    for (const auto& [name, scenario] : after) {
        const auto old = before.find(name);
        if (old == before.end())
            say(name, "ajouté"_ansi);
        else if (old->second != scenario)
            say(name, "changé"_ansi);
    }
    for (const auto& [name, scenario] : before)
        if (!after.contains(name)) say(name, "supprimé"_ansi);
    return lines;
}

}  // namespace

std::string packSite(const Platform& platform, std::string_view applicationFolder,
                     ArchiveFormat& format) {
    FileSystem& files = platform.files;
    std::vector<ArchiveFile> content;
    const auto add = [&](std::string_view name) {
        const std::string path = pathOf(applicationFolder, name);
        if (files.fileExists(path)) content.push_back({std::string(name), files.read(path)});
    };
    for (const std::string_view name : kSettings) add(name);
    const std::string database = scenarioDatabase(applicationFolder);
    if (files.fileExists(database)) {
        const PassingFile passing(files, applicationFolder);
        // One that is damaged goes along as it is.
        const bool whole =
            resumeNext([&] { platform.databases.CompactDatabase(database, passing.path()); });
        content.push_back({std::string(kDatabase), files.read(whole ? passing.path() : database)});
    }
    const std::string folder = scenariosFolder(applicationFolder);
    if (files.folderExists(folder))
        for (const std::string& name : files.list(folder)) {
            const std::string own = ownName(std::string(kScenarios) + name);
            if (!own.empty()) add(own);
        }
    return format.pack(content);
}

SiteImport readSite(ArchiveFormat& format, std::string_view archive) {
    SiteImport site;
    for (ArchiveFile& file : format.unpack(archive, kMostBytes)) {
        std::string name = ownName(file.name);
        const auto same = [&](const ArchiveFile& other) {
            return equalIgnoringCase(other.name, name);
        };
        if (name.empty() || std::any_of(site.files.begin(), site.files.end(), same))
            site.ignored.push_back(file.name);
        else
            site.files.push_back({std::move(name), std::move(file.content)});
    }
    if (site.files.empty())
        throw RuntimeError(error_number::kBadFormat,
                           std::string("L'archive ne contient aucun fichier d'un site."_ansi));
    return site;
}

std::string changesOf(const Platform& platform, std::string_view applicationFolder,
                      const SiteImport& site) {
    std::vector<std::string> lines;
    for (const ArchiveFile& file : site.files) {
        if (file.name == kDatabase) {
            const auto scenarios = scenarioChanges(platform, applicationFolder, file.content);
            lines.insert(lines.end(), scenarios.begin(), scenarios.end());
            continue;
        }
        const std::string path = pathOf(applicationFolder, file.name);
        const bool there = platform.files.fileExists(path);
        if (!there || platform.files.read(path) != file.content)
            lines.push_back(file.name + std::string(there ? " : remplacé"_ansi : " : ajouté"_ansi));
    }
    std::string text;
    for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i)
        text += "\r\n- " + lines[i];
    if (lines.size() > kMostLines)
        text += "\r\n- et " + std::to_string(lines.size() - kMostLines) + " autres";
    return text;
}

std::string bringIn(const Platform& platform, RunTimeState& state, ArchiveFormat& format,
                    const SiteImport& site) {
    const std::string folder = state.scenario.applicationFolder;
    FileSystem& files = platform.files;
    const PassingFile passing(files, folder);
    files.replace(inFolder(copiesFolder(folder), kBefore), packSite(platform, folder, format));
    files.needFolder(scenariosFolder(folder));
    const std::string* database = nullptr;
    for (const ArchiveFile& file : site.files) {
        if (file.name == kDatabase)
            database = &file.content;
        else
            files.replace(pathOf(folder, file.name), file.content);
    }
    std::string problems;
    if (database != nullptr) {
        files.replace(passing.path(), *database);
        problems = replaceScenarios(platform, state, passing.path());
    }
    state.scenario.keys.LoadKeyCorrespondence(platform.profiles, folder);
    return std::string("Le site est importé. Ce qui était là est dans Copies, "_ansi) +
           std::string(kBefore) + "." + problems;
}

}  // namespace kalvo
