// What the kernel says in one line of a file.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace kalvo {

// Empty when there is no such file.
inline std::string firstLine(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

}  // namespace kalvo
