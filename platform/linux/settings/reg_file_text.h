// The content of registry files in the .reg export format:
//
//   REGEDIT4                       or  Windows Registry Editor Version 5.00
//
//   [HKEY_CURRENT_USER\Software\Firm]
//   "Name"="text with \\ and \""   a text; it may hold line ends
//   @="text"                       the value without a name
//   "Name"=dword:0000002a          also hex: and hex(n): over lines ended by "\"
//   "Name"=-                       no such value; [-HKEY...] no such key
//
// Read in what encoding regedit and editors leave them: UTF-16 or UTF-8 behind a
// byte order mark; without one REGEDIT4 is code page 1252, and version 5 UTF-8 where
// that is possible and code page 1252 where it is not. A write keeps the encoding it
// finds; a new file is REGEDIT4 in code page 1252, as the program's INI files are,
// and Windows imports it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace kalvo {

// The value under a key of the current user ("Software\Firm"); nothing when it is
// missing or its line is damaged. The last of several equal names counts, as it does
// for an import. Texts come in code page 1252 (other characters as "?"), without NUL
// unless they were exported as bytes.
[[nodiscard]] std::optional<RegistryValue> findRegistryValue(std::string content,
                                                             std::string_view path,
                                                             std::string_view name);

// The content with the value set and every other byte kept. Nothing when key or name
// hold a control character: the format has no room for them.
[[nodiscard]] std::optional<std::string> withRegistryValue(std::string content,
                                                           std::string_view path,
                                                           std::string_view name,
                                                           const RegistryValue& value);

// The content without that value, every other byte kept.
[[nodiscard]] std::string withoutRegistryValue(std::string content, std::string_view path,
                                               std::string_view name);

}  // namespace kalvo
