#include "platform/linux/linux_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include "platform/linux/file_stream.h"
#include "platform/linux/native_path.h"
#include "platform/linux/system_error_text.h"
#include "platform/linux/whole_file.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr unsigned kNewFileMode = 0666;
constexpr unsigned kNewFolderMode = 0777;

// What a missing file is called: the file, or already its folder.
int missingNumber(const std::string& path) {
    const std::size_t end = path.find_last_of('/');
    const bool folderIsThere =
        end == std::string::npos || end == 0 || ::access(path.substr(0, end).c_str(), F_OK) == 0;
    return folderIsThere ? error_number::kFileNotFound : error_number::kPathNotFound;
}

struct stat statusOf(std::string_view path) {
    const std::string native = nativePath(path);
    struct stat status {};
    if (::stat(native.c_str(), &status) != 0) throw fileError(errno, path, missingNumber(native));
    return status;
}

FileDescriptor openForReading(std::string_view path, int how = 0) {
    const std::string native = nativePath(path);
    FileDescriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | how));
    if (!file.isOpen()) throw fileError(errno, path, missingNumber(native));
    return file;
}

// Without waiting: a pipe that nobody reads, or a device, fails instead.
std::unique_ptr<TextStream> openForWriting(std::string_view path, int how) {
    FileDescriptor file(::open(nativePath(path).c_str(),
                               O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | how, kNewFileMode));
    if (!file.isOpen()) throw fileError(errno, path, error_number::kPathNotFound);
    return std::make_unique<FileStream>(std::move(file), path);
}

class FileSource : public ByteSource {
public:
    FileSource(FileDescriptor file, std::string_view path) : file_(std::move(file)), path_(path) {}
    std::size_t read(std::span<char> buffer) override {
        const std::ptrdiff_t got = readSome(file_, buffer.data(), buffer.size());
        if (got < 0) throw fileError(errno, path_);
        return static_cast<std::size_t>(got);
    }

private:
    FileDescriptor file_;
    std::string path_;
};

}  // namespace

bool LinuxFileSystem::fileExists(std::string_view path) {
    struct stat status {};
    return ::stat(nativePath(path).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool LinuxFileSystem::folderExists(std::string_view path) {
    struct stat status {};
    return ::stat(nativePath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void LinuxFileSystem::createFolder(std::string_view path) {
    if (::mkdir(nativePath(path).c_str(), kNewFolderMode) != 0)
        throw fileError(errno, path, error_number::kPathNotFound);
}

std::unique_ptr<TextStream> LinuxFileSystem::create(std::string_view path) {
    return openForWriting(path, O_TRUNC);
}

std::unique_ptr<TextStream> LinuxFileSystem::createNew(std::string_view path) {
    static_cast<void>(::unlink(nativePath(path).c_str()) == 0);
    return openForWriting(path, O_EXCL | O_NOFOLLOW);
}

std::unique_ptr<TextStream> LinuxFileSystem::append(std::string_view path) {
    return openForWriting(path, O_APPEND);
}

std::string LinuxFileSystem::read(std::string_view path) {
    // Not waiting: a pipe under the name of a file must not stop the program.
    const FileDescriptor file = openForReading(path, O_NONBLOCK);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) throw fileError(errno, path);
    if (!S_ISREG(status.st_mode)) throw fileError(EISDIR, path);
    std::string content;
    std::size_t size = 0;
    for (;;) {
        if (content.size() - size < kFileBlock) content.resize(2 * size + kFileBlock);
        const std::ptrdiff_t got = readSome(file, content.data() + size, content.size() - size);
        if (got < 0) throw fileError(errno, path);
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    content.resize(size);
    return content;
}

std::unique_ptr<ByteSource> LinuxFileSystem::open(std::string_view path) {
    if (folderExists(path)) throw fileError(EISDIR, path);
    return std::make_unique<FileSource>(openForReading(path), path);
}

void LinuxFileSystem::readLines(std::string_view path,
                                const std::function<void(std::string_view line)>& visit) {
    visitLines(openForReading(path), path, visit);
}

std::uint64_t LinuxFileSystem::size(std::string_view path) {
    const struct stat status = statusOf(path);
    if (S_ISDIR(status.st_mode)) throw fileError(EISDIR, path);
    return static_cast<std::uint64_t>(status.st_size);
}

std::int64_t LinuxFileSystem::ageInSeconds(std::string_view path) {
    return std::int64_t{::time(nullptr)} - std::int64_t{statusOf(path).st_mtime};
}

std::vector<std::string> LinuxFileSystem::list(std::string_view folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(nativePath(folder).c_str()),
                                                   ::closedir);
    if (!open) throw fileError(errno, folder, error_number::kPathNotFound);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(open.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.push_back(fromUtf8(name));
    }
    if (errno != 0) throw fileError(errno, folder);
    return names;
}

void LinuxFileSystem::remove(std::string_view path) {
    const std::string native = nativePath(path);
    if (::unlink(native.c_str()) != 0) throw fileError(errno, path, missingNumber(native));
}

std::string LinuxFileSystem::shownPath(std::string_view path) const {
    return fromUtf8(nativePath(path));
}

void LinuxFileSystem::replace(std::string_view path, std::string_view content) {
    if (!replaceWholeFile(nativePath(path), std::string(content)))
        throw fileError(errno, path, error_number::kPathNotFound);
}

void LinuxFileSystem::rename(std::string_view from, std::string_view to) {
    const std::string native = nativePath(from);
    if (::rename(native.c_str(), nativePath(to).c_str()) != 0)
        throw fileError(errno, errno == EISDIR ? to : from, missingNumber(native));
}

}  // namespace kalvo
