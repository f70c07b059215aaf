#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform/sqlite/database_path.h"
#include "platform/sqlite/file_placement.h"
#include "platform/sqlite/sqlite_error.h"

namespace kalvo {

namespace {

bool flush(const char* path, int flags) {
    const int descriptor = open(path, flags | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool done = fsync(descriptor) == 0;
    close(descriptor);
    return done;
}

// A file system that cannot flush folders is as durable as it gets: not an error.
void flushFolder(const std::filesystem::path& file) {
    const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    flush(folder.c_str(), O_RDONLY | O_DIRECTORY);
}

}  // namespace

bool placeNewFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        flushFolder(to);
        return true;
    }
    // Only rename() replaces; where there are no hard links it has to do.
    std::error_code ignored;
    if (errno == EEXIST || std::filesystem::exists(to, ignored)) return false;
    replaceFile(from, to);
    return true;
}

void replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) throw diskError(shownName(to));
    flushFolder(to);
}

void flushFile(const std::filesystem::path& file) {
    if (!flush(file.c_str(), O_RDONLY)) throw diskError(shownName(file));
}

}  // namespace kalvo
