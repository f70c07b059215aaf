// French for the library that reads command lines.
#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace kalvo {

// Words of the help of a program and its commands.
void speakFrench(CLI::App& app);

// What is wrong with a command line. Texts of a program's own checks stay as they are.
[[nodiscard]] std::string frenchText(const CLI::ParseError& error, const CLI::App& app);

}  // namespace kalvo
