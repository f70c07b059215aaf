#include "platform/windows/system_error_text.h"

#include "text/file_error_text.h"

namespace kalvo {

namespace {

int numberOf(DWORD systemError) {
    switch (systemError) {
        case ERROR_FILE_NOT_FOUND: return error_number::kFileNotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_FILENAME_EXCED_RANGE: return error_number::kPathNotFound;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT: return error_number::kPermissionDenied;
        case ERROR_DIRECTORY: return error_number::kPathAccess;
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS: return error_number::kFileExists;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL: return error_number::kDiskFull;
        case ERROR_TOO_MANY_OPEN_FILES: return error_number::kTooManyFiles;
        default: return error_number::kDeviceIo;
    }
}

}  // namespace

RuntimeError fileError(DWORD systemError, std::string_view path) {
    return fileRuntimeError(numberOf(systemError), path);
}

}  // namespace kalvo
