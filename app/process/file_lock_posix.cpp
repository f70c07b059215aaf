#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <utility>

#include "app/process/file_lock.h"
#include "platform/shared/file_descriptor.h"

namespace kalvo {

struct FileLock::Handle {
    FileDescriptor file;
};

namespace {

// The whole file, by open file rather than by process.
struct flock wholeFile(short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

// Whoever may write to a folder could make the file before us and keep it locked for ever.
FileDescriptor openTrusted(const std::filesystem::path& file, int how) {
    FileDescriptor opened(
        open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | how, S_IRUSR | S_IWUSR));
    struct stat status {};
    struct stat folder {};
    if (!opened.isOpen() || fstat(opened.number(), &status) != 0 ||
        stat(file.parent_path().c_str(), &folder) != 0)
        return FileDescriptor();
    const bool known =
        status.st_uid == geteuid() || status.st_uid == 0 || status.st_uid == folder.st_uid;
    return S_ISREG(status.st_mode) && known ? std::move(opened) : FileDescriptor();
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& file)
    : handle_(std::make_unique<Handle>(Handle{openTrusted(file, O_CREAT)})) {}

FileLock::~FileLock() = default;

bool FileLock::take() {
    struct flock lock = wholeFile(F_WRLCK);
    return !handle_->file.isOpen() || fcntl(handle_->file.number(), F_OFD_SETLK, &lock) == 0 ||
           (errno != EAGAIN && errno != EACCES);
}

void FileLock::giveBack() {
    struct flock lock = wholeFile(F_UNLCK);
    (void)fcntl(handle_->file.number(), F_OFD_SETLK, &lock);
}

void FileLock::write(std::string_view text) noexcept {
    const int file = handle_->file.number();
    if (pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()))
        (void)!ftruncate(file, static_cast<off_t>(text.size()));
}

bool FileLock::taken(const std::filesystem::path& file) {
    const FileDescriptor opened = openTrusted(file, 0);
    struct flock lock = wholeFile(F_WRLCK);
    return opened.isOpen() && fcntl(opened.number(), F_OFD_GETLK, &lock) == 0 &&
           lock.l_type != F_UNLCK;
}

std::string FileLock::read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace kalvo
