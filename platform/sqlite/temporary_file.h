// A file that is being made, under a name of its own beside the one it will get.
#pragma once

#include <filesystem>

namespace kalvo {

// Chooses a name nobody uses in the folder of `target`; makes no file. What stands
// under the name in the end (and a rollback journal of it) is removed, unless the
// file has been moved to its place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// The file the engine keeps beside a database while it changes it.
[[nodiscard]] std::filesystem::path journalOf(const std::filesystem::path& database);

}  // namespace kalvo
