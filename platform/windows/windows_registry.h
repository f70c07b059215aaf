// The registry of the system.
#pragma once

#include <optional>
#include <string_view>

#include "platform/registry.h"

namespace kalvo {

class WindowsRegistry : public Registry {
public:
    [[nodiscard]] std::optional<RegistryValue> query(RegistryRoot root, std::string_view path,
                                                     std::string_view name) override;
    bool set(RegistryRoot root, std::string_view path, std::string_view name,
             const RegistryValue& value) override;
    bool remove(RegistryRoot root, std::string_view path, std::string_view name) override;
};

}  // namespace kalvo
