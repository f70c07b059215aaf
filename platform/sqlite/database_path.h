// Paths of database files, from the text the system keeps to what the file
// functions and the engine take.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kalvo {

// The file a stored path (code page 1252) names. Where "/" is the native
// separator, "\" separates folders as well and a drive prefix ("C:") is dropped.
[[nodiscard]] std::filesystem::path databaseFile(std::string_view path);

// UTF-8, as the engine opens it.
[[nodiscard]] std::string engineName(const std::filesystem::path& file);

// Code page 1252, to be shown or stored.
[[nodiscard]] std::string shownName(const std::filesystem::path& file);

}  // namespace kalvo
