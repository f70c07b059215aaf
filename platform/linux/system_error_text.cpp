#include "platform/linux/system_error_text.h"

#include <cerrno>
#include "text/file_error_text.h"

namespace kalvo {

namespace {

int numberOf(int systemError, int missing) {
    switch (systemError) {
        case ENOENT: return missing;
        case ENOTDIR:
        case ENAMETOOLONG: return error_number::kPathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY: return error_number::kPermissionDenied;
        case EISDIR:
        case ENOTEMPTY:
        case ELOOP:
        case EINVAL:
        case ENXIO: return error_number::kPathAccess;
        case EEXIST: return error_number::kFileExists;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return error_number::kDiskFull;
        case EMFILE:
        case ENFILE: return error_number::kTooManyFiles;
        default: return error_number::kDeviceIo;
    }
}

}  // namespace

RuntimeError fileError(int systemError, std::string_view path, int missing) {
    return fileRuntimeError(numberOf(systemError, missing), path);
}

}  // namespace kalvo
