#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/spdlog/log_owner.h"

namespace kalvo {

// The folder itself is locked, so that nothing lies about in it. Where a file system knows
// no locks, the log is written all the same.
LogOwner::LogOwner(const std::filesystem::path& folder)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    alone_ = flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

LogOwner::~LogOwner() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace kalvo
