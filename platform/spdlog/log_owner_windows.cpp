#include <windows.h>

#include "platform/spdlog/log_owner.h"

namespace kalvo {

// A file that nobody else can open meanwhile and that is gone afterwards. Where it cannot
// be made at all, the log is written all the same.
LogOwner::LogOwner(const std::filesystem::path& folder)
    : handle_(CreateFileW((folder / L"kalvo-horizon.log-en-cours").c_str(), GENERIC_WRITE, 0,
                          nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE,
                          nullptr)) {
    alone_ = handle_ != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION;
}

LogOwner::~LogOwner() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
}

}  // namespace kalvo
