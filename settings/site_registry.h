// The settings of one of several sites.
#pragma once

#include <memory>

#include "platform/registry.h"

namespace kalvo {

// As long as a site has none of the system's own settings, the user's count for it; its first
// change takes these over, and from then on the site has its own.
class SiteRegistry : public Registry {
public:
    SiteRegistry(std::unique_ptr<Registry> own, std::unique_ptr<Registry> usual);

    [[nodiscard]] std::optional<RegistryValue> query(RegistryRoot root, std::string_view path,
                                                     std::string_view name) override;
    bool set(RegistryRoot root, std::string_view path, std::string_view name,
             const RegistryValue& value) override;
    // Of the site's own values alone.
    bool remove(RegistryRoot root, std::string_view path, std::string_view name) override;

private:
    [[nodiscard]] bool hasOwn() const;
    void takeOver();

    std::unique_ptr<Registry> own_;
    std::unique_ptr<Registry> usual_;
};

}  // namespace kalvo
