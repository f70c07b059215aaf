// What a program finds when it starts, in the form the core knows; and starting over.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kalvo {

// The arguments of main(), without the program's name: the bytes they were given in,
// which are UTF-8 as a rule, on Windows always. From here on the standard streams carry
// bytes, and a console shows them as UTF-8.
[[nodiscard]] std::vector<std::string> beginProcess(int argc, char** argv);

// Puts a new run of the program, with the same arguments and the environment of now, into
// this process; only the standard streams stay open. Returns where the system cannot do it.
void restartProcess();

// The number the system knows this process by.
[[nodiscard]] long processId();

// The file that such an argument names: any name the system knows, whatever its
// characters.
[[nodiscard]] inline std::filesystem::path nativeFile(const std::string& argument) {
    if constexpr (std::filesystem::path::preferred_separator == '/') return argument;
    return {std::u8string(argument.begin(), argument.end())};
}

}  // namespace kalvo
