// Where things are in the application folder.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace kalvo {

// A file or folder of a folder, with this system's separator between them.
[[nodiscard]] inline std::string inFolder(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (path.empty() || !isPathSeparator(path.back())) path.push_back(kPathSeparator);
    return path.append(name);
}

// PortSerie.ini: the serial settings.
[[nodiscard]] inline std::string portSerieIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "PortSerie.ini");
}

// The key definition files: labels and codes, key scripts by code, entries for file
// scenarios.
[[nodiscard]] inline std::string toucheIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Touche.ini");
}
[[nodiscard]] inline std::string corresIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Corres.ini");
}
[[nodiscard]] inline std::string touFicIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "TouFic.ini");
}

// Options.ini: how the program differs from what sites are used to.
[[nodiscard]] inline std::string optionsIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Options.ini");
}

// Applications.ini: how each application wants to be typed into.
[[nodiscard]] inline std::string applicationsIni(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Applications.ini");
}

// Scen.mdb: the scenario database.
[[nodiscard]] inline std::string scenarioDatabase(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Scen.mdb");
}

// The daily copies of the scenario database.
[[nodiscard]] inline std::string copiesFolder(std::string_view applicationFolder) {
    return inFolder(applicationFolder, "Copies");
}

// The scenarios folder, with its closing separator.
[[nodiscard]] inline std::string scenariosFolder(std::string_view applicationFolder) {
    return inFolder(inFolder(applicationFolder, "Scenarios"), "");
}

// The compiled file of a scenario (`ScenarioFile`).
[[nodiscard]] inline std::string scenarioFile(std::string_view applicationFolder,
                                              std::string_view scenarioName) {
    return scenariosFolder(applicationFolder).append(scenarioName).append(".ini");
}

}  // namespace kalvo
