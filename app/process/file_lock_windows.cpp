#include <windows.h>

#include <fstream>
#include <iterator>

#include "app/process/file_lock.h"

namespace kalvo {

struct FileLock::Handle {
    HANDLE file = INVALID_HANDLE_VALUE;
    ~Handle() {
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    }
};

namespace {

// One byte far behind the text: what is locked nobody else can read.
OVERLAPPED lockedByte() {
    OVERLAPPED place{};
    place.OffsetHigh = 1;
    return place;
}

HANDLE openShared(const std::filesystem::path& file, DWORD how) {
    return CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, how,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file) : handle_(std::make_unique<Handle>()) {
    handle_->file = openShared(file, OPEN_ALWAYS);
}

FileLock::~FileLock() = default;

bool FileLock::take() {
    OVERLAPPED place = lockedByte();
    return handle_->file == INVALID_HANDLE_VALUE ||
           LockFileEx(handle_->file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                      &place) != 0 ||
           GetLastError() != ERROR_LOCK_VIOLATION;
}

void FileLock::giveBack() {
    OVERLAPPED place = lockedByte();
    UnlockFileEx(handle_->file, 0, 1, 0, &place);
}

void FileLock::write(std::string_view text) noexcept {
    DWORD written = 0;
    SetFilePointer(handle_->file, 0, nullptr, FILE_BEGIN);
    WriteFile(handle_->file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    SetEndOfFile(handle_->file);
}

bool FileLock::taken(const std::filesystem::path& file) {
    Handle handle;
    handle.file = openShared(file, OPEN_EXISTING);
    if (handle.file == INVALID_HANDLE_VALUE) return false;
    OVERLAPPED place = lockedByte();
    if (LockFileEx(handle.file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                   &place) == 0)
        return GetLastError() == ERROR_LOCK_VIOLATION;
    UnlockFileEx(handle.file, 0, 1, 0, &place);
    return false;
}

std::string FileLock::read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace kalvo
