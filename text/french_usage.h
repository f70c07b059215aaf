// French for the library that reads command lines.
#pragma once

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>

namespace kalvo {

// Words of the help of a program and its commands, before any option is added; of an
// option that is given twice the last value counts.
void speakFrench(CLI::App& app);

// An option whose value is a number in decimal digits, `lowest` to `highest`. (The
// library itself would read 010 as eight.)
template <typename Number, typename Target>
void addNumber(CLI::App& app, const char* name, Target& into, Number lowest, Number highest,
               const char* type, const char* help) {
    app.add_option_function<std::string>(
           name,
           [=, &into](const std::string& text) {
               Number number{};
               const char* const end = text.data() + text.size();
               const auto read = std::from_chars(text.data(), end, number);
               if (read.ec != std::errc{} || read.ptr != end ||
                   !(number >= lowest && number <= highest))
                   throw CLI::ValidationError(name, "valeur non valide : " + text);
               into = number;
           },
           help)
        ->type_name(type);
}

// What is wrong with a command line. Texts of a program's own checks stay as they are.
[[nodiscard]] std::string frenchText(const CLI::ParseError& error, const CLI::App& app);

}  // namespace kalvo
