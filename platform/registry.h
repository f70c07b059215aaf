// The registry, as far as the settings need it: string values of one user.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

enum class RegistryRoot { kCurrentUser };

inline constexpr std::uint32_t kRegSz = 1;
inline constexpr std::uint32_t kRegDword = 4;

// A stored value: its REG_ type and its bytes. The bytes of a text are code page
// 1252 and may or may not end with a NUL.
struct RegistryValue {
    std::uint32_t type = kRegSz;
    std::string data;
};

class Registry {
public:
    virtual ~Registry() = default;

    // Key paths are separated by "\"; keys and names ignore case.
    [[nodiscard]] virtual std::optional<RegistryValue> query(RegistryRoot root,
                                                             std::string_view path,
                                                             std::string_view name) = 0;

    // Creates the key when missing. False when the value could not be stored.
    virtual bool set(RegistryRoot root, std::string_view path, std::string_view name,
                     const RegistryValue& value) = 0;

    // Removes a value, if it is there. False when that failed.
    virtual bool remove(RegistryRoot root, std::string_view path, std::string_view name) = 0;
};

}  // namespace kalvo
