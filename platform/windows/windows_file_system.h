// Files and folders of the system.
#pragma once

#include "platform/file_system.h"

namespace kalvo {

// Paths are code page 1252 whatever the system's code page is. A name that it cannot
// hold is listed with "?" for what it lacks.
class WindowsFileSystem : public FileSystem {
public:
    [[nodiscard]] bool fileExists(std::string_view path) override;
    [[nodiscard]] bool folderExists(std::string_view path) override;
    void createFolder(std::string_view path) override;
    [[nodiscard]] std::unique_ptr<TextStream> create(std::string_view path) override;
    [[nodiscard]] std::unique_ptr<TextStream> createNew(std::string_view path) override;
    [[nodiscard]] std::unique_ptr<TextStream> append(std::string_view path) override;
    [[nodiscard]] std::string read(std::string_view path) override;
    std::unique_ptr<ByteSource> open(std::string_view path) override;
    void readLines(std::string_view path,
                   const std::function<void(std::string_view line)>& visit) override;
    [[nodiscard]] std::uint64_t size(std::string_view path) override;
    [[nodiscard]] std::int64_t ageInSeconds(std::string_view path) override;
    [[nodiscard]] std::vector<std::string> list(std::string_view folder) override;
    void remove(std::string_view path) override;
    [[nodiscard]] std::string shownPath(std::string_view path) const override;
    void replace(std::string_view path, std::string_view content) override;
    void rename(std::string_view from, std::string_view to) override;
};

}  // namespace kalvo
