// A file being written, and the lines of one being read, in blocks.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/shared/file_descriptor.h"

namespace kalvo {

inline constexpr std::size_t kFileBlock = 65536;

// Collects what is written into blocks. After an error nothing more is attempted:
// the file holds what was written before.
class FileStream : public TextStream {
public:
    // `path` is named in errors.
    FileStream(FileDescriptor file, std::string_view path);
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;
    ~FileStream() override;

    void write(std::string_view bytes) override;
    void close() override;

private:
    void flush();

    FileDescriptor file_;
    std::string path_;
    std::string buffer_;
};

// Hands over the lines of a file opened for reading, as FileSystem::readLines says.
void visitLines(const FileDescriptor& file, std::string_view path,
                const std::function<void(std::string_view line)>& visit);

}  // namespace kalvo
