// A registry in memory, case-insensitive as the real one.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/registry.h"
#include "text/ansi_text.h"

namespace kalvo::testing {

class FakeRegistry : public Registry {
public:
    std::optional<RegistryValue> query(RegistryRoot, std::string_view path,
                                       std::string_view name) override {
        const auto found = values_.find(keyOf(path, name));
        if (found == values_.end()) return std::nullopt;
        return found->second;
    }
    bool set(RegistryRoot, std::string_view path, std::string_view name,
             const RegistryValue& value) override {
        values_[keyOf(path, name)] = value;
        return true;
    }
    bool remove(RegistryRoot, std::string_view path, std::string_view name) override {
        values_.erase(keyOf(path, name));
        return true;
    }

private:
    static std::string keyOf(std::string_view path, std::string_view name) {
        std::string key = std::string(path) + "\\" + std::string(name);
        for (char& c : key) c = foldCase(c);
        return key;
    }

    std::map<std::string, RegistryValue> values_;
};

}  // namespace kalvo::testing
