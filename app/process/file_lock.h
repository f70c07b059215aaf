// A file that one process at a time has, and writes for all others to read.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace kalvo {

// Held until it is given back or the process ends, however it ends. Where no such file can
// be made, or it is somebody else's than this user's or the owner's of its folder, there is
// nobody to keep out: it counts as taken.
class FileLock {
public:
    explicit FileLock(const std::filesystem::path& file);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // False while another has it.
    [[nodiscard]] bool take();
    void giveBack();

    // What the file says from now on; by whoever has it.
    void write(std::string_view text) noexcept;

    // Whether somebody has a file, and what it says.
    [[nodiscard]] static bool taken(const std::filesystem::path& file);
    [[nodiscard]] static std::string read(const std::filesystem::path& file);

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

}  // namespace kalvo
