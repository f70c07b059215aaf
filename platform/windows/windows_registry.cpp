#include "platform/windows/windows_registry.h"

#include <windows.h>

#include <memory>
#include <string>

namespace kalvo {

namespace {

struct CloseKey {
    using pointer = HKEY;
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, CloseKey>;

HKEY handleOf(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::kCurrentUser: break;
    }
    return HKEY_CURRENT_USER;
}

}  // namespace

std::optional<RegistryValue> WindowsRegistry::query(RegistryRoot root, std::string_view path,
                                                    std::string_view name) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(handleOf(root), std::string(path).c_str(), 0, KEY_QUERY_VALUE, &opened) !=
        ERROR_SUCCESS)
        return std::nullopt;
    const Key key(opened);

    const std::string valueName(name);
    DWORD type = REG_NONE;
    DWORD size = 0;
    RegistryValue value;
    // Again when it has grown in between.
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        status = RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type, nullptr, &size);
        if (status != ERROR_SUCCESS) break;
        value.data.assign(size, '\0');
        status = RegQueryValueExA(key.get(), valueName.c_str(), nullptr, &type,
                                  reinterpret_cast<BYTE*>(value.data.data()), &size);
    }
    if (status != ERROR_SUCCESS) return std::nullopt;
    value.data.resize(size);
    value.type = type;
    return value;
}

bool WindowsRegistry::set(RegistryRoot root, std::string_view path, std::string_view name,
                          const RegistryValue& value) {
    HKEY created = nullptr;
    if (RegCreateKeyExA(handleOf(root), std::string(path).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                        nullptr, &created, nullptr) != ERROR_SUCCESS)
        return false;
    const Key key(created);
    return RegSetValueExA(key.get(), std::string(name).c_str(), 0, value.type,
                          reinterpret_cast<const BYTE*>(value.data.data()),
                          static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

bool WindowsRegistry::remove(RegistryRoot root, std::string_view path, std::string_view name) {
    const LSTATUS status =
        RegDeleteKeyValueA(handleOf(root), std::string(path).c_str(), std::string(name).c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace kalvo
