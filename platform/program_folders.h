// Where the files of this program can be on a machine.
#pragma once

#include <filesystem>
#include <vector>

namespace kalvo {

struct ProgramFolders {
    std::filesystem::path executable;            // the executable's own
    std::filesystem::path userData;              // of this user
    std::vector<std::filesystem::path> shipped;  // of what is delivered with it, best first
};

// As the system names them; whether they exist is another matter.
[[nodiscard]] ProgramFolders programFolders();

}  // namespace kalvo
