// A folder of its own for every test, gone afterwards.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kalvo::testing {

class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("kalvo-test-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    // The path of a file of the folder; both a native and a core path.
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return path_.string() + "/" + name;
    }
    [[nodiscard]] std::string path() const { return path_.string(); }

    // What the folder holds besides nothing: the number of its entries.
    [[nodiscard]] std::ptrdiff_t entries() const {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

private:
    std::filesystem::path path_;
};

inline void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    if (!file.flush()) throw std::runtime_error(path);
}

inline std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kalvo::testing
