#include "scenario/scenario_names.h"

#include <algorithm>
#include <vector>

#include "settings/application_paths.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

}  // namespace

std::string refusalOfName(std::string_view name) {
    const auto refuse = [&](std::string_view why) {
        return std::string("Nom de scénario refusé : "_ansi) + std::string(why);
    };
    // The separators of every system: a database may come from another one.
    if (name.find_first_of("/\\") != std::string_view::npos)
        return refuse("il contient un séparateur de dossiers (/ ou \\)"_ansi);
    if (std::any_of(name.begin(), name.end(), isControl))
        return refuse("il contient un caractère de contrôle"_ansi);
    if (name == "." || name == "..") return refuse("il désigne un dossier"_ansi);
    return {};
}

std::string findScenarioFile(FileSystem& files, std::string_view applicationFolder,
                             std::string_view name) {
    std::string exact = scenarioFile(applicationFolder, name);
    if (files.fileExists(exact)) return exact;
    std::vector<std::string> present;
    resumeNext([&] { present = files.list(scenariosFolder(applicationFolder)); });
    const std::string wanted = std::string(name) + ".ini";
    const auto found = std::find_if(present.begin(), present.end(), [&](const std::string& file) {
        return equalIgnoringCase(file, wanted);
    });
    return found == present.end() ? exact : scenariosFolder(applicationFolder) + *found;
}

void removeScenarioFile(FileSystem& files, std::string_view applicationFolder,
                        std::string_view name) {
    if (!refusalOfName(name).empty()) return;
    const std::string file = findScenarioFile(files, applicationFolder, name);
    if (files.fileExists(file)) files.remove(file);
}

}  // namespace kalvo
