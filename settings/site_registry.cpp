#include "settings/site_registry.h"

#include <algorithm>
#include <array>
#include <utility>

#include "settings/settings_store.h"

namespace kalvo {

namespace {

constexpr std::array kNames = {kRacScenChx, kRacInvent, kRacCde, kSepDec};

}  // namespace

SiteRegistry::SiteRegistry(std::unique_ptr<Registry> own, std::unique_ptr<Registry> usual)
    : own_(std::move(own)), usual_(std::move(usual)) {}

std::optional<RegistryValue> SiteRegistry::query(RegistryRoot root, std::string_view path,
                                                 std::string_view name) {
    return (hasOwn() ? own_ : usual_)->query(root, path, name);
}

bool SiteRegistry::set(RegistryRoot root, std::string_view path, std::string_view name,
                       const RegistryValue& value) {
    takeOver();
    return own_->set(root, path, name, value);
}

bool SiteRegistry::remove(RegistryRoot root, std::string_view path, std::string_view name) {
    return own_->remove(root, path, name);
}

bool SiteRegistry::hasOwn() const {
    return std::any_of(kNames.begin(), kNames.end(), [this](std::string_view name) {
        return own_->query(RegistryRoot::kCurrentUser, kSettingsKey, name).has_value();
    });
}

void SiteRegistry::takeOver() {
    if (hasOwn()) return;
    for (const std::string_view name : kNames)
        if (const auto value = usual_->query(RegistryRoot::kCurrentUser, kSettingsKey, name))
            own_->set(RegistryRoot::kCurrentUser, kSettingsKey, name, *value);
}

}  // namespace kalvo
