#include "platform/linux/settings/registry_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/settings/reg_file_text.h"
#include "platform/linux/user_folders.h"
#include "platform/linux/whole_file.h"

namespace kalvo {

std::string defaultRegistryFile() { return userConfigFolder() + "/registre.reg"; }

RegistryFile::RegistryFile(std::string path) : file_(std::move(path)) {}

std::optional<RegistryValue> RegistryFile::query(RegistryRoot /*root*/, std::string_view path,
                                                 std::string_view name) {
    std::optional<std::string> content = readWholeFile(file_);
    if (!content) return std::nullopt;
    return findRegistryValue(std::move(*content), path, name);
}

bool RegistryFile::set(RegistryRoot /*root*/, std::string_view path, std::string_view name,
                       const RegistryValue& value) {
    std::error_code ignored;  // a folder that could not be made fails the write
    std::filesystem::create_directories(std::filesystem::path(file_).parent_path(), ignored);
    return updateWholeFile(file_, [&](std::string content) {
        return withRegistryValue(std::move(content), path, name, value);
    });
}

bool RegistryFile::remove(RegistryRoot root, std::string_view path, std::string_view name) {
    if (!query(root, path, name)) return true;
    return updateWholeFile(file_, [&](std::string content) {
        return std::optional(withoutRegistryValue(std::move(content), path, name));
    });
}

}  // namespace kalvo
