#include "platform/program_folders.h"

#include <windows.h>

#include <shlobj.h>

#include <string>

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

fs::path userDataFolder() {
    wchar_t* folder = nullptr;
    fs::path path;
    if (SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder) == S_OK)
        path = fs::path(folder) / L"Kalvo Horizon";
    CoTaskMemFree(folder);
    return path;
}

}  // namespace

ProgramFolders programFolders() {
    const fs::path executable = executableFolder();
    return {executable, userDataFolder(), {executable / L"data"}};
}

}  // namespace kalvo
