#include "platform/linux/app_folder.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/user_folders.h"
#include "text/ansi_text.h"
#include "text/file_error_text.h"

namespace kalvo {

namespace {

namespace fs = std::filesystem;

fs::path executableFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

bool holds(const fs::path& folder, const char* file) {
    std::error_code error;
    return fs::exists(folder / file, error);
}

// The path for the core.
std::string corePath(const std::string& native) {
    std::string path = fromUtf8(native);
    if (toUtf8(path) != native) throw unusablePathError(path);
    return path;
}

}  // namespace

std::string chooseApplicationFolder(std::optional<std::string_view> appDir,
                                    const std::string& executableFolder,
                                    const std::string& userFolder) {
    fs::path folder = userFolder;
    if (appDir)
        folder = (fs::current_path() / *appDir).lexically_normal();
    else if (holds(executableFolder, "PortSerie.ini") || holds(executableFolder, "Scen.mdb"))
        folder = executableFolder;
    if (!folder.has_filename() && folder.has_relative_path()) folder = folder.parent_path();
    return folder.string();
}

std::string applicationFolder(std::optional<std::string_view> appDir) {
    const std::string folder =
        chooseApplicationFolder(appDir, executableFolder().string(), userDataFolder());
    std::string path = corePath(folder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw folderNotMadeError(path);
    return path;
}

std::string shippedDataFolder() {
    const fs::path installed = (executableFolder() / ".." / "share" / "kalvo-horizon");
    for (const fs::path& folder : {installed.lexically_normal(), fs::path(KALVO_DATA_DIR)})
        if (holds(folder, "Touche.ini")) return corePath(folder.string());
    return {};
}

}  // namespace kalvo
