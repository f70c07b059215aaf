#include "text/french_usage.h"

#include <string_view>
#include <vector>

namespace kalvo {

namespace {

// What stands before a word of the library's own message.
std::string before(const std::string& message, std::string_view word) {
    return message.substr(0, message.find(word));
}

std::string unexpected(const CLI::App& app) {
    const std::vector<std::string> remaining = app.remaining(true);
    const std::string first = remaining.empty() ? std::string() : remaining.front();
    if (first.size() > 1 && first.front() == '-') return "option inconnue : " + first;
    const bool commandExpected =
        app.get_subcommands().empty() && !app.get_subcommands(nullptr).empty();
    return (commandExpected ? "commande inconnue : " : "argument en trop : ") + first;
}

}  // namespace

void speakFrench(CLI::App& app) {
    app.option_defaults()->take_last();
    app.set_help_flag("-h,--help", "affiche cette aide");
    auto* const words = dynamic_cast<CLI::Formatter*>(app.get_formatter().get());
    for (const auto& [word, french] : {std::pair{"Usage", "Usage "},
                                       {"OPTIONS", "OPTIONS"},
                                       {"SUBCOMMAND", "COMMANDE"},
                                       {"SUBCOMMANDS", "COMMANDES"},
                                       {"Positionals", "Arguments"},
                                       {"REQUIRED", "(obligatoire)"},
                                       {"Excludes", "exclut"},
                                       {"TEXT", "TEXTE"}})
        words->label(word, french);
}

std::string frenchText(const CLI::ParseError& error, const CLI::App& app) {
    const std::string message = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) return unexpected(app);
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr &&
        message.starts_with("A subcommand"))
        return "il manque ce qu'il faut faire";
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
        return "il manque " + before(message, " is required");
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return before(message, ":") + " : valeur absente";
    if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr)
        return before(message, ": ") + " : " + message.substr(message.find(": ") + 2);
    if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
        return before(message, " excludes ") + " ne va pas avec " +
               message.substr(message.rfind(' ') + 1);
    return message;
}

}  // namespace kalvo
