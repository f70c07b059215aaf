// Small files that are read as a whole and replaced as a whole: whoever reads one
// sees its old or its new content, never a part, and writers wait for each other.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/shared/file_descriptor.h"

namespace kalvo {

// Writes all bytes; false with errno set.
[[nodiscard]] bool writeAll(const FileDescriptor& file, const char* bytes, std::size_t count);

// The next bytes of a file, 0 at its end, negative with errno set on failure.
[[nodiscard]] std::ptrdiff_t readSome(const FileDescriptor& file, char* buffer, std::size_t size);

// The content of a regular file, empty when it is missing; nothing when it is there
// but cannot be read. The path is native (UTF-8).
[[nodiscard]] std::optional<std::string> readWholeFile(const std::string& path);

// Reads the file, hands its content (empty when missing) to `edit` and puts the
// result in its place: a new file in the same folder, flushed to the disk and
// renamed. Permissions and owner are kept, symbolic links followed. Updates of
// files in one folder are serialised among all processes of the machine by a lock
// on the folder; on file systems without locks they are only atomic.
// False when anything fails, or when `edit` returns nothing; the file is then as
// it was.
bool updateWholeFile(const std::string& path,
                     const std::function<std::optional<std::string>(std::string)>& edit);

// Puts a content in the place of a file in the same way, whatever it held. False, with
// errno, when it could not be written; the old file is then there, whole.
bool replaceWholeFile(const std::string& path, const std::string& content);

}  // namespace kalvo
