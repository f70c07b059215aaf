// Profile files with other values for some entries: what is looked at before it is stored
// goes through the readers that will read it later.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/profile_files.h"

namespace kalvo {

// Reads as if the assumed values stood in the files. Writes nothing.
class AssumedProfiles : public ProfileFiles {
public:
    // The assumed value of an entry; nothing where its file is to be read.
    using Assumption = std::function<std::optional<std::string>(
        std::string_view file, std::string_view section, std::string_view key)>;

    AssumedProfiles(ProfileFiles& files, Assumption assumption)
        : files_(files), assumption_(std::move(assumption)) {}

    std::string read(std::string_view file, std::string_view section,
                     std::string_view key) override {
        auto assumed = assumption_(file, section, key);
        return assumed ? *std::move(assumed) : files_.read(file, section, key);
    }
    bool write(std::string_view, std::string_view, std::string_view, std::string_view) override {
        return false;
    }
    std::vector<std::string> sections(std::string_view file) override {
        return files_.sections(file);
    }
    bool removeSection(std::string_view, std::string_view) override { return false; }

private:
    ProfileFiles& files_;
    Assumption assumption_;
};

}  // namespace kalvo
