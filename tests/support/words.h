// Command lines and tables in tests, as one writes them.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo::testing {

// The words between blanks; '' is an empty one.
inline std::vector<std::string> words(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) words.push_back(word == "''" ? "" : word);
    return words;
}

// The parts between separators: the rows of a table between "|", say.
inline std::vector<std::string> split(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at != std::string_view::npos;) {
        const std::size_t end = text.find(separator, at);
        parts.emplace_back(text.substr(at, end - at));
        at = end == std::string_view::npos ? end : end + separator.size();
    }
    return parts;
}

}  // namespace kalvo::testing
