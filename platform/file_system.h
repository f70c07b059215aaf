// Files and folders.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// A text file open for writing; closing happens at the latest on destruction.
class TextStream {
public:
    virtual ~TextStream() = default;
    // RuntimeError 61 when the disk is full, 57 on another device error.
    virtual void write(std::string_view bytes) = 0;
    // Writes what is buffered and closes; errors as write.
    virtual void close() = 0;
};

// A file open for reading in pieces.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    // The next bytes, at most as many as there is room for; 0 at the end only.
    virtual std::size_t read(std::span<char> buffer) = 0;
};

// Paths are code page 1252 as stored by the user. Where "/" is the native
// separator, "\" separates folders as well and a drive prefix ("C:") is dropped.
// Failures are RuntimeErrors: 53 file not found, 70 permission denied, 75 path
// access (a folder where a file is wanted and the like), 76 path not found, 58
// exists already.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    [[nodiscard]] virtual bool fileExists(std::string_view path) = 0;
    [[nodiscard]] virtual bool folderExists(std::string_view path) = 0;

    // One folder; its parent must exist.
    virtual void createFolder(std::string_view path) = 0;
    // The same where it is missing.
    void needFolder(std::string_view path) {
        if (!folderExists(path)) createFolder(path);
    }

    // An empty file in place of whatever file was there, open for writing.
    [[nodiscard]] virtual std::unique_ptr<TextStream> create(std::string_view path) = 0;
    // The same, but a file of our own: whatever has the name, a link included, goes first.
    [[nodiscard]] virtual std::unique_ptr<TextStream> createNew(std::string_view path) = 0;
    // A file open for writing at its end; created when missing.
    [[nodiscard]] virtual std::unique_ptr<TextStream> append(std::string_view path) = 0;

    // The whole content, byte for byte.
    [[nodiscard]] virtual std::string read(std::string_view path) = 0;
    // A file open for reading from its start; errors as read.
    [[nodiscard]] virtual std::unique_ptr<ByteSource> open(std::string_view path) = 0;
    // The content, handed over line by line without line ends (CR LF or LF); a CR
    // inside a line stays. `line` is valid during the call only.
    virtual void readLines(std::string_view path,
                           const std::function<void(std::string_view line)>& visit) = 0;
    // Size in bytes; RuntimeError 53 when missing.
    [[nodiscard]] virtual std::uint64_t size(std::string_view path) = 0;

    // How long ago a file was changed, in seconds; RuntimeError 53 when missing.
    [[nodiscard]] virtual std::int64_t ageInSeconds(std::string_view path) = 0;

    // The names of a folder's files and folders, in the system's order.
    [[nodiscard]] virtual std::vector<std::string> list(std::string_view folder) = 0;

    virtual void remove(std::string_view path) = 0;

    // The path as users of this system write it.
    [[nodiscard]] virtual std::string shownPath(std::string_view path) const = 0;

    // Puts a content in the place of a file, or makes the file, in one step: whoever looks
    // finds the old content or the new one, whole, whatever happens in between. On the
    // disk when it returns.
    virtual void replace(std::string_view path, std::string_view content) = 0;

    // Gives a file another name in the same folder, in place of a file of that name:
    // whoever looks finds the old file or the new one, whole.
    virtual void rename(std::string_view from, std::string_view to) = 0;
};

// Whether a character separates folders in the paths of this system.
constexpr bool isPathSeparator(char character) {
#ifdef _WIN32
    return character == '\\';
#else
    return character == '\\' || character == '/';
#endif
}

// The separator this system writes.
#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

}  // namespace kalvo
