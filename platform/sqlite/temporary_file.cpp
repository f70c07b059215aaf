#include "platform/sqlite/temporary_file.h"

#include <random>
#include <string>
#include <system_error>

namespace kalvo {

TemporaryFile::TemporaryFile(const std::filesystem::path& target) {
    std::random_device random;
    std::error_code ignored;
    do {
        path_ = target;
        path_ += ".tmp-" + std::to_string(random());
    } while (std::filesystem::exists(path_, ignored));
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
    std::filesystem::remove(journalOf(path_), ignored);
}

std::filesystem::path journalOf(const std::filesystem::path& database) {
    std::filesystem::path journal = database;
    journal += "-journal";
    return journal;
}

}  // namespace kalvo
