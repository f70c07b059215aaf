// Zip archives over libzip, in memory.
#pragma once

#include "platform/archive.h"

namespace kalvo {

class ZipArchive : public ArchiveFormat {
public:
    [[nodiscard]] std::string pack(const std::vector<ArchiveFile>& files) override;
    [[nodiscard]] std::vector<ArchiveFile> unpack(std::string_view archive,
                                                  std::uint64_t mostBytes) override;
};

}  // namespace kalvo
