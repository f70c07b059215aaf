#include "platform/windows/app_folder.h"

#include <windows.h>

#include <shlobj.h>

#include <system_error>

#include "platform/windows/wide_text.h"
#include "text/ansi_text.h"
#include "text/file_error_text.h"

namespace kalvo {

namespace {

namespace fs = std::filesystem;

fs::path executableFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (size < path.size()) {
            path.resize(size);
            return fs::path(path).parent_path();
        }
        path.resize(2 * path.size());
    }
}

fs::path userFolder() {
    wchar_t* folder = nullptr;
    fs::path path;
    if (SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder) == S_OK)
        path = fs::path(folder) / L"Kalvo Horizon";
    CoTaskMemFree(folder);
    return path;
}

bool holds(const fs::path& folder, const char* file) {
    std::error_code error;
    return fs::exists(folder / file, error);
}

// The path for the core.
std::string corePath(const fs::path& folder) {
    std::string path = ansiFromWide(folder.native());
    if (wideFromAnsi(path) != folder.native()) throw unusablePathError(path);
    return path;
}

}  // namespace

fs::path chooseApplicationFolder(std::optional<std::string_view> appDir,
                                 const fs::path& executableFolder, const fs::path& userFolder) {
    fs::path folder = userFolder;
    if (appDir)
        folder = (fs::current_path() / wideFromUtf8(*appDir)).lexically_normal();
    else if (holds(executableFolder, "PortSerie.ini") || holds(executableFolder, "Scen.mdb"))
        folder = executableFolder;
    folder.make_preferred();
    if (!folder.has_filename() && folder.has_relative_path()) folder = folder.parent_path();
    return folder;
}

std::string applicationFolder(std::optional<std::string_view> appDir) {
    const fs::path folder = chooseApplicationFolder(appDir, executableFolder(), userFolder());
    std::string path = corePath(folder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (error || !fs::is_directory(folder, error)) throw folderNotMadeError(path);
    return path;
}

std::string shippedDataFolder() {
    const fs::path folder = executableFolder() / L"data";
    return holds(folder, "Touche.ini") ? corePath(folder) : std::string{};
}

}  // namespace kalvo
