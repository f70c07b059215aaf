#include <windows.h>

#include "platform/sqlite/database_path.h"
#include "platform/sqlite/file_placement.h"
#include "platform/sqlite/sqlite_error.h"

namespace kalvo {

bool placeNewFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0) return true;
    const DWORD error = GetLastError();
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) return false;
    throw diskError(shownName(to));
}

void replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH | MOVEFILE_REPLACE_EXISTING) ==
        0)
        throw diskError(shownName(to));
}

void flushFile(const std::filesystem::path& file) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw diskError(shownName(file));
    const bool done = FlushFileBuffers(handle) != 0;
    CloseHandle(handle);
    if (!done) throw diskError(shownName(file));
}

}  // namespace kalvo
