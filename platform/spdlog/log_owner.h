// Who writes the log of a folder.
#pragma once

#include <filesystem>

namespace kalvo {

// Held as long as the object lives; a process that is killed holds nothing.
class LogOwner {
public:
    explicit LogOwner(const std::filesystem::path& folder);
    LogOwner(const LogOwner&) = delete;
    LogOwner& operator=(const LogOwner&) = delete;
    ~LogOwner();

    // False when another process writes the log.
    [[nodiscard]] bool alone() const { return alone_; }

private:
    bool alone_ = true;
#ifdef _WIN32
    void* handle_ = nullptr;
#else
    int descriptor_ = -1;
#endif
};

}  // namespace kalvo
