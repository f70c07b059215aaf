// INI files in memory: sections and keys ignore case and blanks at their ends.
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "platform/profile_files.h"
#include "text/ansi_text.h"

namespace kalvo::testing {

class FakeProfileFiles : public ProfileFiles {
public:
    // Every write, in order: "file[section]key=value".
    std::vector<std::string> writes;
    bool readOnly = false;

    std::string read(std::string_view file, std::string_view section,
                     std::string_view key) override {
        const auto found = values_.find({std::string(file), normal(section), normal(key)});
        return found == values_.end() ? "" : normalValue(found->second);
    }
    bool write(std::string_view file, std::string_view section, std::string_view key,
               std::string_view value) override {
        if (readOnly) return false;
        writes.push_back(std::string(file) + "[" + std::string(section) + "]" + std::string(key) +
                         "=" + std::string(value));
        values_[{std::string(file), normal(section), normal(key)}] = value;
        return true;
    }

private:
    static std::string normalValue(std::string_view text) {
        const auto first = text.find_first_not_of(' ');
        if (first == std::string_view::npos) return {};
        return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1))
            .substr(0, 2054);
    }
    static std::string normal(std::string_view text) {
        std::string result = normalValue(text);
        for (char& c : result) c = foldCase(c);
        return result;
    }

    std::map<std::tuple<std::string, std::string, std::string>, std::string> values_;
};

}  // namespace kalvo::testing
