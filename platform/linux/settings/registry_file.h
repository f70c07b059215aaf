// The registry without Windows: one text file of the user.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace kalvo {

// Where the user's registry file belongs (a native path, UTF-8):
// $XDG_CONFIG_HOME/kalvo-horizon/registre.reg, by default in ~/.config.
[[nodiscard]] std::string defaultRegistryFile();

// Format: reg_file_text.h, so that a key exported on Windows can be put in place as
// it is. A missing file holds no values; a write creates it with its folders,
// replaces it atomically and waits for the writes of other processes.
class RegistryFile : public Registry {
public:
    // `path` is native (UTF-8).
    explicit RegistryFile(std::string path = defaultRegistryFile());

    [[nodiscard]] std::optional<RegistryValue> query(RegistryRoot root, std::string_view path,
                                                     std::string_view name) override;
    bool set(RegistryRoot root, std::string_view path, std::string_view name,
             const RegistryValue& value) override;
    bool remove(RegistryRoot root, std::string_view path, std::string_view name) override;

private:
    std::string file_;
};

}  // namespace kalvo
