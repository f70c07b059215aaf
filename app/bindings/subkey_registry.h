// The settings of one of several sites in a registry that all of them share.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/registry.h"

namespace kalvo {

// Every key is the one of that name below it.
class SubkeyRegistry : public Registry {
public:
    SubkeyRegistry(std::unique_ptr<Registry> shared, std::string subkey)
        : shared_(std::move(shared)), subkey_(std::move(subkey)) {}

    [[nodiscard]] std::optional<RegistryValue> query(RegistryRoot root, std::string_view path,
                                                     std::string_view name) override {
        return shared_->query(root, below(path), name);
    }
    bool set(RegistryRoot root, std::string_view path, std::string_view name,
             const RegistryValue& value) override {
        return shared_->set(root, below(path), name, value);
    }
    bool remove(RegistryRoot root, std::string_view path, std::string_view name) override {
        return shared_->remove(root, below(path), name);
    }

private:
    [[nodiscard]] std::string below(std::string_view path) const {
        return std::string(path).append("\\").append(subkey_);
    }

    std::unique_ptr<Registry> shared_;
    std::string subkey_;
};

}  // namespace kalvo
