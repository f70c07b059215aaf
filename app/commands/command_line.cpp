#include "app/commands/command_line.h"

#include <algorithm>
#include <string_view>

#include "app/commands/commands.h"
#include "text/french_usage.h"

namespace kalvo {

namespace {

constexpr const char* kFooter =
    "Sans commande : le programme de bureau (icône de notification).\n"
    "Code de retour : 0 réussite, 1 échec, 2 usage.";

KeyboardKind keyboardKind(std::string_view name) {
    if (name == "x11") return KeyboardKind::kX11;
    if (name == "wayland") return KeyboardKind::kWayland;
    if (name == "portal") return KeyboardKind::kPortal;
    return KeyboardKind::kAutomatic;
}

// What the grammar of single options cannot say.
std::string problemOf(const CommandLine& line) {
    if (line.command == nullptr) return {};
    if (line.autostart) return "--autostart va sans commande";
    if (std::string_view(line.command->name) == "compile" && !line.allScenarios &&
        line.scenario.empty())
        return "la commande compile veut un nom de scénario ou --all";
    return {};
}

}  // namespace

std::optional<CommandLine> parseCommandLine(std::vector<std::string> arguments,
                                            std::string& problem) {
    CommandLine line;
    CLI::App app("KALVO Horizon : saisie de terminaux codes-barres", "kalvo-horizon");
    speakFrench(app);
    app.footer(kFooter);
    app.set_version_flag("--version", "kalvo-horizon " KALVO_VERSION, "affiche la version");
    app.add_option_function<std::string>(
           "--app-dir", [&line](const std::string& folder) { line.applicationFolder = folder; },
           "dossier des réglages et des scénarios")
        ->type_name("DOSSIER");
    app.add_option_function<std::string>(
           "--autostart", [&line](const std::string& value) { line.autostart = value == "on"; },
           "démarre le programme avec la session, ou non")
        ->type_name("on|off")
        ->check([](const std::string& value) {
            return value == "on" || value == "off" ? std::string()
                                                   : std::string("--autostart veut on ou off");
        });
    app.add_option_function<std::string>(
           "--keyboard", [&line](const std::string& name) { line.keyboard = keyboardKind(name); },
           "moyen de saisie sous Linux (choisi d'après la session)")
        ->type_name("x11|wayland|portal")
        ->check([](const std::string& name) {
            return keyboardKind(name) != KeyboardKind::kAutomatic
                       ? std::string()
                       : std::string("--keyboard veut x11, wayland ou portal");
        });
    for (const Command& command : allCommands()) {
        CLI::App* const sub = app.add_subcommand(command.name, command.help);
        sub->group("Commandes")->fallthrough();
        command.declare(*sub, line);
    }
    // What stands behind a command is its own, even the name of another one.
    app.require_subcommand(0, 1);
    try {
        // The last argument first: that is how the library wants them.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        line.answer = app.help();
        return line;
    } catch (const CLI::CallForVersion& version) {
        line.answer = std::string(version.what()) + "\n";
        return line;
    } catch (const CLI::ParseError& error) {
        problem = frenchText(error, app);
        return std::nullopt;
    }
    for (const Command& command : allCommands())
        if (app.got_subcommand(command.name)) line.command = &command;
    problem = problemOf(line);
    if (!problem.empty()) return std::nullopt;
    return line;
}

}  // namespace kalvo
