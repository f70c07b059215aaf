#include "platform/linux/file_stream.h"

#include <cerrno>
#include <utility>

#include "platform/linux/system_error_text.h"
#include "platform/linux/whole_file.h"
#include "text/line_splitter.h"

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
    LineSplitter lines;
    for (;;) {
        const std::ptrdiff_t got = readSome(file, block.data(), block.size());
        if (got < 0) throw fileError(errno, path);
        if (got == 0) break;
        lines.feed(std::string_view(block).substr(0, static_cast<std::size_t>(got)), visit);
    }
    lines.finish(visit);
}

}  // namespace kalvo
