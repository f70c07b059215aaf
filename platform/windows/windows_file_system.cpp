#include "platform/windows/windows_file_system.h"

#include <windows.h>

#include <utility>

#include "platform/windows/file_handle.h"
#include "platform/windows/file_stream.h"
#include "platform/windows/system_error_text.h"
#include "platform/windows/wide_text.h"
#include "text/line_splitter.h"

namespace kalvo {

namespace {

constexpr DWORD kEverybodyMay = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

DWORD attributesOf(std::string_view path) { return GetFileAttributesW(wideFromAnsi(path).c_str()); }

bool isFolder(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The system denies access where a folder stands in place of a file.
RuntimeError accessError(DWORD error, std::string_view path) {
    const bool folder = error == ERROR_ACCESS_DENIED && isFolder(attributesOf(path));
    return fileError(folder ? DWORD{ERROR_DIRECTORY} : error, path);
}

FileHandle openFile(std::string_view path, DWORD access, DWORD share, DWORD how) {
    const HANDLE file = CreateFileW(wideFromAnsi(path).c_str(), access, share, nullptr, how,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) throw accessError(GetLastError(), path);
    return FileHandle(file);
}

FileHandle openForReading(std::string_view path) {
    return openFile(path, GENERIC_READ, kEverybodyMay, OPEN_EXISTING);
}

// The next bytes of a file, 0 at its end.
std::size_t readSome(const FileHandle& file, char* buffer, std::size_t size,
                     std::string_view path) {
    DWORD got = 0;
    if (!ReadFile(file.get(), buffer, static_cast<DWORD>(size), &got, nullptr)) {
        const DWORD error = GetLastError();
        if (error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF) throw fileError(error, path);
    }
    return got;
}

class FileSource : public ByteSource {
public:
    FileSource(FileHandle file, std::string_view path) : file_(std::move(file)), path_(path) {}
    std::size_t read(std::span<char> buffer) override {
        return readSome(file_, buffer.data(), buffer.size(), path_);
    }

private:
    FileHandle file_;
    std::string path_;
};

struct CloseSearch {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

}  // namespace

bool WindowsFileSystem::fileExists(std::string_view path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !isFolder(attributes);
}

bool WindowsFileSystem::folderExists(std::string_view path) { return isFolder(attributesOf(path)); }

void WindowsFileSystem::createFolder(std::string_view path) {
    if (!CreateDirectoryW(wideFromAnsi(path).c_str(), nullptr))
        throw fileError(GetLastError(), path);
}

std::unique_ptr<TextStream> WindowsFileSystem::create(std::string_view path) {
    return std::make_unique<FileStream>(
        openFile(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS), path);
}

std::unique_ptr<TextStream> WindowsFileSystem::createNew(std::string_view path) {
    DeleteFileW(wideFromAnsi(path).c_str());
    return std::make_unique<FileStream>(openFile(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_NEW),
                                        path);
}

std::unique_ptr<TextStream> WindowsFileSystem::append(std::string_view path) {
    return std::make_unique<FileStream>(
        openFile(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS), path);
}

std::string WindowsFileSystem::read(std::string_view path) {
    const FileHandle file = openForReading(path);
    std::string content;
    std::size_t size = 0;
    for (;;) {
        if (content.size() - size < kFileBlock) content.resize(2 * size + kFileBlock);
        const std::size_t got = readSome(file, content.data() + size, content.size() - size, path);
        if (got == 0) break;
        size += got;
    }
    content.resize(size);
    return content;
}

std::unique_ptr<ByteSource> WindowsFileSystem::open(std::string_view path) {
    return std::make_unique<FileSource>(openForReading(path), path);
}

void WindowsFileSystem::readLines(std::string_view path,
                                  const std::function<void(std::string_view line)>& visit) {
    const FileHandle file = openForReading(path);
    std::string block(kFileBlock, '\0');
    LineSplitter lines;
    while (const std::size_t got = readSome(file, block.data(), block.size(), path))
        lines.feed(std::string_view(block).substr(0, got), visit);
    lines.finish(visit);
}

std::uint64_t WindowsFileSystem::size(std::string_view path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wideFromAnsi(path).c_str(), GetFileExInfoStandard, &data))
        throw fileError(GetLastError(), path);
    if (isFolder(data.dwFileAttributes)) throw fileError(ERROR_DIRECTORY, path);
    return (std::uint64_t{data.nFileSizeHigh} << 32U) | data.nFileSizeLow;
}

std::int64_t WindowsFileSystem::ageInSeconds(std::string_view path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wideFromAnsi(path).c_str(), GetFileExInfoStandard, &data))
        throw fileError(GetLastError(), path);
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32U) |
                                         time.dwLowDateTime);
    };
    constexpr std::int64_t kTicksASecond = 10'000'000;
    return (ticks(now) - ticks(data.ftLastWriteTime)) / kTicksASecond;
}

std::vector<std::string> WindowsFileSystem::list(std::string_view folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE first = FindFirstFileW((wideFromAnsi(folder) + L"\\*").c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        // A drive's empty root has not even "."; a missing folder is another error.
        if (error == ERROR_FILE_NOT_FOUND) return {};
        throw fileError(error, folder);
    }
    const std::unique_ptr<HANDLE, CloseSearch> search(first);
    std::vector<std::string> names;
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L"..") names.push_back(ansiFromWide(name));
    } while (FindNextFileW(search.get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES) throw fileError(GetLastError(), folder);
    return names;
}

void WindowsFileSystem::remove(std::string_view path) {
    if (!DeleteFileW(wideFromAnsi(path).c_str())) throw accessError(GetLastError(), path);
}

std::string WindowsFileSystem::shownPath(std::string_view path) const { return std::string(path); }

void WindowsFileSystem::replace(std::string_view path, std::string_view content) {
    const std::string temporary = std::string(path) + ".kalvo-" +
                                  std::to_string(GetCurrentProcessId()) + "-" +
                                  std::to_string(GetTickCount64()) + ".tmp";
    try {
        FileHandle file = openFile(temporary, GENERIC_WRITE, 0, CREATE_NEW);
        DWORD written = 0;
        if (!WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written,
                       nullptr) ||
            !FlushFileBuffers(file.get()))
            throw fileError(GetLastError(), path);
        file.reset();
        if (!MoveFileExW(wideFromAnsi(temporary).c_str(), wideFromAnsi(path).c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            throw accessError(GetLastError(), path);
    } catch (const RuntimeError&) {
        DeleteFileW(wideFromAnsi(temporary).c_str());
        throw;
    }
}

void WindowsFileSystem::rename(std::string_view from, std::string_view to) {
    if (!MoveFileExW(wideFromAnsi(from).c_str(), wideFromAnsi(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING))
        throw accessError(GetLastError(), folderExists(to) ? to : from);
}

}  // namespace kalvo
