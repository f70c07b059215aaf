// The output files of "Fichier" scenarios.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "scenario/scenario_run.h"

namespace kalvo {

// Where a text went.
struct FileOutput {
    std::string path;
    bool written = false;
    std::string problem;  // why not, in French
};

// Writes a text to the file of the chosen scenario, creating its folder, and tells
// the user. The file is replaced, or with SpecifMode a new one is made beside it
// (lot.txt, lot1.txt, lot2.txt, ...). On any failure the user is told.
FileOutput WriteFileLine(const Platform& platform, const ScenarioRun& run, std::string_view text);

// Creates every missing folder of a path that ends with a separator. A part that
// holds a "." is left out, with what that means for the folders behind it.
void CreateFolderPath(const Platform& platform, std::string_view path);

// Whether the folder's listing holds exactly that name. A listing that fails is
// shown to the user and counts as not holding it.
[[nodiscard]] bool FileExistsInFolder(const Platform& platform, std::string_view folder,
                                      std::string_view name);

}  // namespace kalvo
