#include "platform/linux/whole_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <thread>

#include "platform/linux/user_folders.h"

namespace kalvo {

namespace {

constexpr int kNewFileMode = 0666;  // less what the user's umask takes away
constexpr int kMostLinks = 40;      // as many as the system itself follows

// The file a path stands for: the end of its chain of symbolic links, which need
// not exist. A loop is left for the calls on the file to report.
std::filesystem::path targetOf(const std::string& path) {
    std::filesystem::path target = path;
    std::error_code error;
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(target, error); ++i) {
        const auto link = std::filesystem::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / link;
    }
    return target;
}

// Updates of files in one folder wait for each other through a lock of the user's own:
// whoever may read the folder itself could lock that one for ever. A process that keeps
// the lock for ten seconds is no longer waited for.
FileDescriptor lockFolder(const std::filesystem::path& folder) {
    std::error_code error;
    const auto whole = std::filesystem::weakly_canonical(folder, error);
    const std::size_t name = std::hash<std::string>{}(whole.string());
    FileDescriptor lock(::open((userRuntimeFolder() + "/" + std::to_string(name)).c_str(),
                               O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (lock.isOpen() && ::flock(lock.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR && errno != EWOULDBLOCK) break;
        if (std::chrono::steady_clock::now() > deadline) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return lock;
}

// A new file with a name no other process uses; its path is put into `path`.
FileDescriptor createBeside(const std::filesystem::path& target, std::filesystem::path& path) {
    static std::atomic<unsigned> serial{0};
    FileDescriptor file;
    do {
        path = target;
        path.replace_filename(".kalvo-" + std::to_string(::getpid()) + "-" +
                              std::to_string(serial++) + ".tmp");
        file = FileDescriptor(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    } while (!file.isOpen() && errno == EEXIST);
    return file;
}

// Gives a new file owner and permissions of the one it replaces. Only a privileged
// process can give a file away; the group is worth a try of its own.
bool takeOverAttributes(const FileDescriptor& file, const struct stat& old) {
    if (::fchown(file.number(), old.st_uid, old.st_gid) != 0)
        static_cast<void>(::fchown(file.number(), static_cast<uid_t>(-1), old.st_gid) == 0);
    return ::fchmod(file.number(), old.st_mode & 07777U) == 0;
}

bool replaceFile(const std::filesystem::path& target, const std::string& content,
                 const struct stat* old) {
    std::filesystem::path temporary;
    FileDescriptor file = createBeside(target, temporary);
    if (!file.isOpen()) return false;
    const bool written = writeAll(file, content.data(), content.size()) &&
                         (old == nullptr || takeOverAttributes(file, *old)) &&
                         ::fsync(file.number()) == 0 && file.close();
    if (written && std::rename(temporary.c_str(), target.c_str()) == 0) return true;
    const int error = errno;
    ::unlink(temporary.c_str());
    errno = error;
    return false;
}

}  // namespace

bool writeAll(const FileDescriptor& file, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(file.number(), bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
}

std::ptrdiff_t readSome(const FileDescriptor& file, char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t got = ::read(file.number(), buffer, size);
        if (got >= 0 || errno != EINTR) return got;
    }
}

std::optional<std::string> readWholeFile(const std::string& path) {
    // Not waiting: a pipe under the name of a settings file must not stop the program.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        return errno == ENOENT ? std::optional<std::string>(std::string{}) : std::nullopt;
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;

    std::string content(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t size = 0;
    for (;;) {
        if (size == content.size()) content.resize(2 * size);  // it grew meanwhile
        const std::ptrdiff_t got = readSome(file, content.data() + size, content.size() - size);
        if (got < 0) return std::nullopt;
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    content.resize(size);
    return content;
}

bool updateWholeFile(const std::string& path,
                     const std::function<std::optional<std::string>(std::string)>& edit) {
    if (path.empty()) return false;
    const std::filesystem::path target = targetOf(path);
    const auto folder = target.has_parent_path() ? target.parent_path() : ".";
    const FileDescriptor lock = lockFolder(folder);

    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    // Renaming would get around the write protection of a file.
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;

    std::optional<std::string> content = readWholeFile(target);
    if (content) content = edit(std::move(*content));
    return content && replaceFile(target, *content, exists ? &old : nullptr);
}

bool replaceWholeFile(const std::string& path, const std::string& content) {
    if (path.empty()) {
        errno = ENOENT;
        return false;
    }
    const std::filesystem::path target = targetOf(path);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) {
        errno = EISDIR;
        return false;
    }
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
    return replaceFile(target, content, exists ? &old : nullptr);
}

}  // namespace kalvo
