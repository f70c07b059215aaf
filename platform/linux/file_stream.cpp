#include "platform/linux/file_stream.h"

#include <cerrno>
#include <utility>

#include "platform/linux/system_error_text.h"
#include "platform/linux/whole_file.h"

namespace kalvo {

FileStream::FileStream(FileDescriptor file, std::string_view path)
    : file_(std::move(file)), path_(path) {}

FileStream::~FileStream() {
    // Whoever wants to know of late errors closes the stream.
    if (file_.isOpen()) static_cast<void>(writeAll(file_, buffer_.data(), buffer_.size()));
}

void FileStream::write(std::string_view bytes) {
    if (!file_.isOpen()) throw fileError(EBADF, path_);
    buffer_ += bytes;
    if (buffer_.size() >= kFileBlock) flush();
}

void FileStream::close() {
    if (!file_.isOpen()) return;
    flush();
    if (!file_.close()) throw fileError(errno, path_);
}

void FileStream::flush() {
    const std::string pending = std::exchange(buffer_, {});
    if (writeAll(file_, pending.data(), pending.size())) return;
    const int error = errno;
    file_.close();
    throw fileError(error, path_);
}

void visitLines(const FileDescriptor& file, std::string_view path,
                const std::function<void(std::string_view line)>& visit) {
    std::string block(kFileBlock, '\0');
    std::string begun;  // the part of a line that stood in earlier blocks
    for (;;) {
        const std::ptrdiff_t got = readSome(file, block.data(), block.size());
        if (got < 0) throw fileError(errno, path);
        if (got == 0) break;
        std::string_view rest(block.data(), static_cast<std::size_t>(got));
        for (std::size_t end = rest.find('\n'); end != std::string_view::npos;
             end = rest.find('\n')) {
            std::string_view line = rest.substr(0, end);
            if (!begun.empty()) line = begun += line;
            if (line.ends_with('\r')) line.remove_suffix(1);
            visit(line);
            begun.clear();
            rest.remove_prefix(end + 1);
        }
        begun += rest;
    }
    if (!begun.empty()) visit(begun);
}

}  // namespace kalvo
