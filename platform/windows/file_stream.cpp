#include "platform/windows/file_stream.h"

#include <utility>

#include "platform/windows/system_error_text.h"

namespace kalvo {

FileStream::FileStream(FileHandle file, std::string_view path)
    : file_(std::move(file)), path_(path) {}

FileStream::~FileStream() {
    // Whoever wants to know of late errors closes the stream.
    if (file_) flush();
}

void FileStream::write(std::string_view bytes) {
    if (!file_) throw fileError(ERROR_INVALID_HANDLE, path_);
    buffer_ += bytes;
    if (buffer_.size() < kFileBlock || flush()) return;
    const DWORD error = GetLastError();
    file_.reset();
    throw fileError(error, path_);
}

void FileStream::close() {
    if (!file_) return;
    const bool written = flush();
    const DWORD error = GetLastError();
    file_.reset();
    if (!written) throw fileError(error, path_);
}

bool FileStream::flush() {
    const std::string pending = std::exchange(buffer_, {});
    for (std::size_t done = 0; done < pending.size();) {
        DWORD written = 0;
        if (!WriteFile(file_.get(), pending.data() + done,
                       static_cast<DWORD>(pending.size() - done), &written, nullptr))
            return false;
        done += written;
    }
    return true;
}

}  // namespace kalvo
