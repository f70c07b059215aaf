#include "platform/program_folders.h"

#include <system_error>

#include "platform/linux/user_folders.h"

namespace kalvo {

ProgramFolders programFolders() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error).parent_path();
    // Installed, or in the tree the program was built from.
    return {executable,
            userDataFolder(),
            {(executable / ".." / "share" / "kalvo-horizon").lexically_normal(), KALVO_DATA_DIR}};
}

}  // namespace kalvo
