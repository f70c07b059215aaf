#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "app/process/file_lock.h"
#include "platform/file_descriptor.h"

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

}  // namespace

FileLock::FileLock(const std::filesystem::path& file)
    : handle_(std::make_unique<Handle>(Handle{FileDescriptor(
          open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR))})) {}

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
    const FileDescriptor opened(open(file.c_str(), O_RDWR | O_CLOEXEC));
    struct flock lock = wholeFile(F_WRLCK);
    return opened.isOpen() && fcntl(opened.number(), F_OFD_GETLK, &lock) == 0 &&
           lock.l_type != F_UNLCK;
}

std::string FileLock::read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace kalvo
