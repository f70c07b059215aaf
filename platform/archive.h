// One file that holds others.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

struct ArchiveFile {
    std::string name;  // code page 1252, folders parted by "/"; from a file: anything at all
    std::string content;

    bool operator==(const ArchiveFile&) const = default;
};

class ArchiveFormat {
public:
    virtual ~ArchiveFormat() = default;

    // The bytes of an archive of these files, compressed.
    [[nodiscard]] virtual std::string pack(const std::vector<ArchiveFile>& files) = 0;

    // The files of an archive, its folders left out; each is checked for damage. RuntimeError
    // 321 for what is no archive, is damaged or encrypted, or holds more than `mostBytes`.
    [[nodiscard]] virtual std::vector<ArchiveFile> unpack(std::string_view archive,
                                                          std::uint64_t mostBytes) = 0;
};

}  // namespace kalvo
