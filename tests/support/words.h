// Command lines in tests, as one writes them.
#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace kalvo::testing {

// The words between blanks; '' is an empty one.
inline std::vector<std::string> words(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) words.push_back(word == "''" ? "" : word);
    return words;
}

}  // namespace kalvo::testing
