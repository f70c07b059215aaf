#include "scenario/file_output.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "scenario/scenario_file.h"
#include "scenario/scenario_names.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// The names of a folder; none, with a message, when it cannot be listed.
std::vector<std::string> namesIn(const Platform& platform, std::string_view folder) {
    try {
        return platform.files.list(folder);
    } catch (const RuntimeError& error) {
        platform.dialogs.message("Error: " + std::to_string(error.number()), kApplicationTitle,
                                 MessageIcon::kCritical);
        return {};
    }
}

// The length of the path up to and including its last separator.
std::size_t folderLength(std::string_view path) {
    const auto last = std::find_if(path.rbegin(), path.rend(), isPathSeparator);
    return static_cast<std::size_t>(path.rend() - last);
}

// The first of name.txt, name1.txt, name2.txt, ... that the folder does not hold.
// The numbered names are looked for in one listing, however many files there are.
std::string freeName(const Platform& platform, std::string_view folder, const std::string& name) {
    const std::size_t dot = name.find('.');
    if (dot == std::string::npos)
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Argument ou appel de procédure incorrect"_ansi));
    if (!FileExistsInFolder(platform, folder, name)) return name;
    const auto names = namesIn(platform, folder);
    const std::unordered_set<std::string> taken(names.begin(), names.end());
    std::string candidate = name;
    for (int counter = 1; taken.contains(candidate); ++counter)
        candidate = name.substr(0, dot) + std::to_string(counter) + name.substr(dot);
    return candidate;
}

void writeFile(const Platform& platform, const std::string& path, std::string_view text) {
    platform.files.create(path)->close();
    const auto file = platform.files.append(path);
    file->write(text);
    file->close();
}

std::string targetPath(const Platform& platform, const ScenarioRun& run) {
    std::string path = ReadIniValue(
        platform.profiles,
        findScenarioFile(platform.files, run.applicationFolder, run.active.ScenarioName),
        scenario_file::kChemin.section, scenario_file::kChemin.key);
    const std::string folder = path.substr(0, folderLength(path));
    if (!platform.files.folderExists(folder)) CreateFolderPath(platform, folder);
    if (!run.active.SpecifMode) return path;
    // A name without a folder is one of the current folder.
    return folder + freeName(platform, folder.empty() ? "." : folder, path.substr(folder.size()));
}

}  // namespace

FileOutput WriteFileLine(const Platform& platform, const ScenarioRun& run, std::string_view text) {
    FileOutput output;
    try {
        output.path = targetPath(platform, run);
        writeFile(platform, output.path, text);
        output.written = true;
        platform.dialogs.message("Fichier " + output.path + std::string(" : généré"_ansi),
                                 kApplicationTitle, MessageIcon::kInformation);
    } catch (const RuntimeError& error) {
        output.problem = error.description();
        platform.dialogs.message(
            "Une erreur d'écriture de fichier vient de se produire. Votre fichier n'a pas pu être créé"_ansi,
            kApplicationTitle, MessageIcon::kCritical);
    }
    return output;
}

void CreateFolderPath(const Platform& platform, std::string_view path) {
    std::string prefix;
    std::size_t start = 0;
    for (bool first = true;; first = false) {
        const auto* const end = std::find_if(path.begin() + start, path.end(), isPathSeparator);
        const std::string_view part =
            path.substr(start, static_cast<std::size_t>(end - path.begin()) - start);
        if (first)
            prefix = part;
        else if (part.find('.') == std::string_view::npos)
            prefix.append(1, kPathSeparator).append(part);
        if (!first) platform.files.needFolder(prefix);
        if (end == path.end()) return;
        start = static_cast<std::size_t>(end - path.begin()) + 1;
    }
}

bool FileExistsInFolder(const Platform& platform, std::string_view folder, std::string_view name) {
    const auto names = namesIn(platform, folder);
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace kalvo
