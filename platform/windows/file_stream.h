// A text file being written, in blocks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/windows/file_handle.h"

namespace kalvo {

inline constexpr std::size_t kFileBlock = 65536;

// Collects what is written into blocks. After an error nothing more is attempted:
// the file holds what was written before.
class FileStream : public TextStream {
public:
    // `path` is named in errors.
    FileStream(FileHandle file, std::string_view path);
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;
    ~FileStream() override;

    void write(std::string_view bytes) override;
    void close() override;

private:
    // False, with the system's error set, when not everything could be written.
    bool flush();

    FileHandle file_;
    std::string path_;
    std::string buffer_;
};

}  // namespace kalvo
