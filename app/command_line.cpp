#include "app/command_line.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

struct ValueOption {
    std::string_view name;
    std::optional<std::string> CommandLine::*value;
};

constexpr auto kValueOptions = std::to_array<ValueOption>({
    {"--app-dir", &CommandLine::applicationFolder},
    {"--scenario", &CommandLine::scenario},
    {"--date", &CommandLine::date},
    {"--layout", &CommandLine::layout},
    {"--locks", &CommandLine::locks},
    {"--separator", &CommandLine::separator},
    {"--pause", &CommandLine::pause},
    {"--autostart", &CommandLine::autostart},
});

struct Flag {
    std::string_view name;
    bool CommandLine::*value;
};

constexpr auto kFlags = std::to_array<Flag>({
    {"--all", &CommandLine::all},
    {"--help", &CommandLine::help},
    {"-h", &CommandLine::help},
    {"--version", &CommandLine::version},
});

// Each command, its options beside --app-dir, and how many arguments it takes.
struct Command {
    std::string_view name;
    std::string_view options;
    std::size_t leastArguments;
    std::size_t mostArguments;
};

constexpr auto kCommands = std::to_array<Command>({
    {"", "--autostart", 0, 0},
    {"listen", "", 0, 0},
    {"compile", "--all", 0, 1},
    {"script", "--scenario --date", 1, 1},
    {"events", "--layout --locks", 1, 1},
    {"type", "--pause", 1, 1},
    {"replay", "--separator", 1, 1},
    {"import", "", 1, 1},
    {"ports", "", 0, 0},
});

const Command* findCommand(std::string_view name) {
    const auto* const found =
        std::find_if(kCommands.begin(), kCommands.end(),
                     [&](const Command& command) { return command.name == name; });
    return found == kCommands.end() ? nullptr : found;
}

template <typename Options>
const typename Options::value_type* findOption(const Options& options, std::string_view name) {
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const auto& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

// Whether the list of a command's options holds the name as a whole word.
bool takesOption(const Command& command, std::string_view name) {
    const std::string list = " " + std::string(command.options) + " ";
    return list.find(" " + std::string(name) + " ") != std::string::npos;
}

bool anyCommandOption(std::string_view name) {
    return name == "--app-dir" || name == "--help" || name == "-h" || name == "--version";
}

}  // namespace

std::optional<CommandLine> parseCommandLine(const std::vector<std::string>& arguments,
                                            std::string& problem) {
    const auto refuse = [&](std::string_view text, std::string_view what) {
        problem = std::string(text) + std::string(what);
        return std::nullopt;
    };
    CommandLine line;
    std::vector<std::string> words;
    std::vector<std::string> options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        // "-" alone is standard input.
        if (!word.starts_with('-') || word == "-") {
            words.push_back(fromUtf8(word));
            continue;
        }
        options.push_back(word);
        if (const Flag* flag = findOption(kFlags, word)) {
            line.*flag->value = true;
        } else if (const ValueOption* option = findOption(kValueOptions, word)) {
            if (++i == arguments.size()) return refuse("Valeur manquante pour l'option ", word);
            const bool native = option->value == &CommandLine::applicationFolder;
            line.*option->value = native ? arguments[i] : fromUtf8(arguments[i]);
        } else {
            return refuse("Option inconnue : ", word);
        }
    }
    if (line.help || line.version) return line;
    if (!words.empty()) {
        line.command = words.front();
        line.arguments.assign(words.begin() + 1, words.end());
    }
    const Command* const command = findCommand(line.command);
    if (command == nullptr) return refuse("Commande inconnue : ", line.command);
    for (const std::string& option : options)
        if (!anyCommandOption(option) && !takesOption(*command, option))
            return refuse("Option sans objet pour cette commande : ", option);
    if (line.arguments.size() < command->leastArguments)
        return refuse("Argument manquant pour la commande ", line.command);
    if (line.arguments.size() > command->mostArguments)
        return refuse("Argument en trop : ", line.arguments[command->mostArguments]);
    if (line.command == "compile" && line.all == !line.arguments.empty())
        return refuse("La commande compile veut un nom de scénario ou --all"_ansi, "");
    if (line.autostart && *line.autostart != "on" && *line.autostart != "off")
        return refuse("L'option --autostart veut on ou off", "");
    return line;
}

std::string_view usageText() {
    return "Usage : kalvo-horizon [--app-dir DOSSIER] [COMMANDE ...]\n"
           "\n"
           "Sans commande : le programme de bureau (icône de notification).\n"
           "\n"
           "  --autostart on|off              démarre le programme avec la session, ou non\n"
           "  listen                          reçoit et saisit, sans fenêtres, jusqu'à "
           "SIGINT/SIGTERM\n"
           "                                  (SIGUSR1 : entrée Transfert du menu)\n"
           "  compile NOM | --all             compile un scénario, ou tous\n"
           "  script [--scenario NOM] [--date JJ/MM/AA] FICHIER\n"
           "                                  affiche le script de touches de la trame ; rien "
           "n'est saisi\n"
           "  events [--layout us] [--locks CNS] FICHIER\n"
           "                                  affiche les frappes d'un script ; rien n'est saisi\n"
           "  type [--pause MS] FICHIER       saisit un script dans l'application active\n"
           "  replay FICHIER --separator S    rejoue un fichier texte\n"
           "  import FICHIER.mdb              reprend une base Jet\n"
           "  ports                           liste les ports série\n"
           "\n"
           "FICHIER vaut - pour l'entrée standard. Code de retour : 0 réussite, 1 échec, 2 usage.\n"_ansi;
}

}  // namespace kalvo
