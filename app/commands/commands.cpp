#include "app/commands/commands.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "text/french_usage.h"

namespace kalvo {

namespace {

constexpr int kLongestPause = 86'400'000;  // milliseconds: a day

// "JJ/MM/AA"; years from 70 on belong to the last century. Nothing for what is no day.
std::optional<LocalTime> dayOf(const std::string& text) {
    unsigned day = 0;
    unsigned month = 0;
    int year = 0;
    int used = 0;
    const int read = std::sscanf(text.c_str(), "%2u/%2u/%2d%n", &day, &month, &year, &used);
    if (read != 3 || static_cast<std::size_t>(used) != text.size() || year < 0) return std::nullopt;
    year += year < 70 ? 2000 : 1900;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    if (!date.ok()) return std::nullopt;
    LocalTime time;
    time.year = year;
    time.month = static_cast<int>(month);
    time.day = static_cast<int>(day);
    return time;
}

void declareFile(CLI::App& app, CommandLine& line) {
    app.add_option("FICHIER", line.file, "- pour l'entrée standard")->required();
}

void declareNothing(CLI::App&, CommandLine&) {}

void declareListen(CLI::App& app, CommandLine& line) {
    app.add_flag("--status", line.status,
                 "dit port, scénario, lots et dernière erreur de l'écoute en cours");
}

void declareCompile(CLI::App& app, CommandLine& line) {
    auto* const name = app.add_option("NOM", line.scenario, "le scénario à compiler");
    app.add_flag("--all", line.allScenarios, "tous les scénarios")->excludes(name);
}

void declareScript(CLI::App& app, CommandLine& line) {
    declareFile(app, line);
    app.add_option("--scenario", line.scenario, "un autre que le scénario actif")->type_name("NOM");
    app.add_option_function<std::string>(
           "--date",
           [&line](const std::string& text) {
               line.date = dayOf(text);
               if (!line.date)
                   throw CLI::ValidationError("--date", "date incorrecte (JJ/MM/AA) : " + text);
           },
           "un autre jour qu'aujourd'hui")
        ->type_name("JJ/MM/AA");
}

void declareEvents(CLI::App& app, CommandLine& line) {
    declareFile(app, line);
    app.add_option("--layout", line.layout, "disposition de clavier (us)")->type_name("NOM");
    app.add_option("--locks", line.locks, "verrouillages actifs : C, N, S")
        ->type_name("CNS")
        ->check([](const std::string& locks) {
            return locks.find_first_not_of("CNS") == std::string::npos
                       ? std::string()
                       : "verrouillages inconnus (C, N, S) : " + locks;
        });
}

void declareType(CLI::App& app, CommandLine& line) {
    auto* const file = app.add_option("FICHIER", line.file, "- pour l'entrée standard");
    app.add_flag("--trial", line.trial, "essaie comment saisir dans l'application, sans FICHIER")
        ->excludes(file);
    app.callback([&line] {
        if (line.file.empty() && !line.trial) throw CLI::RequiredError("FICHIER");
    });
    addNumber(app, "--pause", line.pause, 0, kLongestPause, "MS", "pause de chaque {TIMER} (0)");
}

void declareReplay(CLI::App& app, CommandLine& line) {
    declareFile(app, line);
    app.add_option("--separator", line.separator, "séparateur des champs")
        ->type_name("S")
        ->required();
}

void declarePorts(CLI::App& app, CommandLine& line) {
    app.add_flag("--keyboard", line.listKeyboard, "ce qui sert à la saisie, au lieu des ports");
}

void declareImport(CLI::App& app, CommandLine& line) {
    app.add_option("FICHIER.mdb", line.file)->required();
}

void declareJournal(CLI::App& app, CommandLine& line) {
    app.require_subcommand(1);
    const auto action = [&](const char* name, const char* help, JournalAction asked) {
        CLI::App* const sub = app.add_subcommand(name, help);
        sub->group("Commandes")->fallthrough();
        sub->parse_complete_callback([&line, asked] { line.journal = asked; });
        return sub;
    };
    const auto addBatch = [&](CLI::App* sub) {
        sub->add_option("LOT", line.batch, "son numéro")->type_name("")->required();
    };
    action("list", "liste les lots, le plus ancien d'abord", JournalAction::kList)
        ->add_flag("--json", line.json, "un objet JSON par ligne");
    addBatch(action("show", "affiche les octets reçus, exactement", JournalAction::kShow));
    CLI::App* const resend =
        action("resend", "fait repasser un lot par le scénario actif", JournalAction::kResend);
    addBatch(resend);
    resend->add_option("--from", line.from, "premier passage à saisir (1)")->type_name("N");
    action("purge", "oublie les lots trop anciens et ce qui dépasse la taille voulue",
           JournalAction::kPurge);
}

constexpr auto kCommands = std::to_array<Command>({
    {"listen",
     "reçoit et saisit, sans fenêtres, jusqu'à SIGINT ou SIGTERM (SIGUSR1 : Transfert, SIGHUP : "
     "réglages relus)",
     declareListen, runListen},
    {"compile", "compile un scénario, ou tous", declareCompile, runCompile},
    {"script", "affiche le script de touches d'une trame ; rien n'est saisi", declareScript,
     runScript},
    {"events", "affiche les frappes d'un script ; rien n'est saisi", declareEvents, runEvents},
    {"type", "saisit un script dans l'application active", declareType, runType},
    {"replay", "rejoue un fichier texte", declareReplay, runReplay},
    {"import", "reprend une base Jet", declareImport, runImport},
    {"journal", "les lots reçus et ce qu'ils sont devenus", declareJournal, runJournal},
    {"ports", "liste les ports série", declarePorts, runPorts},
    {"sites", "liste les dossiers servis et qui y travaille", declareNothing, runSites},
});

}  // namespace

std::span<const Command> allCommands() { return kCommands; }

}  // namespace kalvo
