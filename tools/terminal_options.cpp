#include "tools/terminal_options.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "text/french_usage.h"

namespace kalvo {

namespace {

constexpr int kMost = 1000000;
constexpr int kMostTerminals = 100;
constexpr std::int64_t kLongest = 86400000;  // ms: a day

constexpr const char* kFooter =
    "TYPE : HT630, PT630 (envoient un lot d'eux-mêmes), Optimus ou ScanPal (attendent READ, puis\n"
    "un ACK par enregistrement). FICHIER : un enregistrement par ligne, champs séparés par \";\"\n"
    "(\"-\" : entrée standard). Code de retour : 0 envoyé, 1 échec, 2 appel incorrect.";

LineFaults::Pause pauseOf(const std::string& text) {
    LineFaults::Pause pause{};
    const char* const end = text.data() + text.size();
    const auto time = std::from_chars(text.data(), end, pause.milliseconds);
    const bool colon = time.ec == std::errc{} && time.ptr != end && *time.ptr == ':';
    const auto count = std::from_chars(colon ? time.ptr + 1 : end, end, pause.after);
    if (!colon || count.ec != std::errc{} || count.ptr != end || pause.milliseconds < 0 ||
        pause.milliseconds > kLongest)
        throw CLI::ValidationError("--pause", "attend MS:N");
    return pause;
}

// Gives the options that are declared in a scope a heading of their own in the help.
class Heading {
public:
    Heading(CLI::App& app, const char* title)
        : app_(app), title_(title), before_(app.get_options().size()) {}
    Heading(const Heading&) = delete;
    Heading& operator=(const Heading&) = delete;
    ~Heading() {
        const auto options = app_.get_options();
        for (std::size_t i = before_; i < options.size(); ++i) options[i]->group(title_);
    }

private:
    CLI::App& app_;
    const char* title_;
    std::size_t before_;
};

void addLine(CLI::App& app, TerminalOptions& options) {
    const Heading heading(app, "Liaison");
    auto* const device =
        app.add_option("--device", options.device, "port série ou pseudo-terminal existant")
            ->type_name("CHEMIN");
    app.add_option("--settings", options.settings, "réglages du port série (9600,N,8,1)");
    auto* const pty =
        app.add_flag("--pty", options.pseudoTerminal,
                     "crée un pseudo-terminal, dont le chemin est la première ligne affichée");
    pty->excludes(device);
    app.add_option("--link", options.link, "lien symbolique vers ce pseudo-terminal")
        ->type_name("CHEMIN");
    app.add_flag("--wait-open", options.waitsForOpening,
                 "attend que l'autre programme ait ouvert le pseudo-terminal");
    addNumber(
        app, "--terminals", options.terminals, 1, kMostTerminals, "N",
        "N terminaux à la fois, chacun sur son pseudo-terminal ; {n} dans FICHIER, --link et\n"
        "--log est remplacé par son numéro (1)");
    addNumber<std::int64_t>(app, "--linger", options.lingerMilliseconds, 0, kLongest, "MS",
                            "garde le pseudo-terminal après le dernier envoi (1000)");
}

void addSending(CLI::App& app, TerminalOptions& options) {
    const Heading heading(app, "Envoi");
    DialogueOptions& dialogue = options.dialogue;
    app.add_option_function<std::string>(
           "--separator",
           [&options](const std::string& text) {
               if (text != "TAB" && text.size() != 1)
                   throw CLI::ValidationError("--separator", "un seul caractère, ou TAB");
               options.separator = text == "TAB" ? '\t' : text[0];
           },
           "séparateur de champs du fichier (\";\", TAB pour la tabulation)")
        ->type_name("C");
    app.add_option("--log", options.logFile,
                   "note chaque enregistrement remis (HT630, PT630 : envoyé ; Optimus, ScanPal :\n"
                   "acquitté) : numéro, temps en ms depuis 1970")
        ->type_name("CHEMIN");
    addNumber(app, "--speed", options.faults.speed, 1U, 4000000U, "BAUDS",
              "au rythme de la ligne, 10 bits par caractère (sans limite)");
    addNumber(app, "--repeat", dialogue.batches, 1, kMost, "N", "nombre de lots (1)");
    addNumber<std::int64_t>(app, "--wait", dialogue.waitMilliseconds, 0, kLongest, "MS",
                            "attente avant chaque lot (0)");
    app.add_flag("--connect", dialogue.announceConnection,
                 "PT630 : envoie le texte de connexion à la place du lot");
    app.add_flag("--empty", dialogue.emptyBatch, "PT630 : envoie un lot vide");
    app.add_flag("--tab", dialogue.tabbed, "Optimus, ScanPal : lignes qui commencent par TAB");
    app.add_flag(
        "--ack,!--no-ack", dialogue.answersRead,
        "Optimus, ScanPal : répond ACK à READ, comme les vrais lecteurs (par défaut), ou non");
    addNumber<std::int64_t>(app, "--read-timeout", dialogue.readTimeout, 0, kLongest, "MS",
                            "attente de READ (0 : sans limite)");
    addNumber<std::int64_t>(app, "--ack-timeout", dialogue.ackTimeout, 1, kLongest, "MS",
                            "attente de ACK avant un nouvel envoi (2000)");
    addNumber(app, "--resend", dialogue.resends, 0, kMost, "N",
              "nouveaux envois d'un enregistrement (3)");
}

void addFaults(CLI::App& app, TerminalOptions& options) {
    const Heading heading(app, "Défauts");
    addNumber(app, "--noise", options.faults.noise, 0.0, 1.0, "TAUX",
              "octets parasites, probabilité de 0 à 1 par caractère");
    app.add_option_function<std::vector<std::string>>(
           "--pause",
           [&options](const std::vector<std::string>& pauses) {
               for (const std::string& pause : pauses)
                   options.faults.pauses.push_back(pauseOf(pause));
           },
           "silence de MS millisecondes après N caractères")
        ->type_name("MS:N")
        ->allow_extra_args(false)  // the file behind it is none
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addNumber(app, "--cut", options.dialogue.cutRecord, 1, kMost, "N",
              "perd la moitié de la ligne N au premier envoi");
    addNumber(app, "--lose-ack", options.dialogue.lostAck, 1, kMost, "N",
              "perd le N-ième ACK reçu");
    addNumber<std::uint32_t>(app, "--seed", options.faults.seed, 0U,
                             std::numeric_limits<std::uint32_t>::max(), "N",
                             "graine du hasard (1)");
}

bool needsRecords(const DialogueOptions& dialogue) {
    return !dialogue.announceConnection && !dialogue.emptyBatch;
}

void checkLine(const TerminalOptions& options) {
    if (options.device.empty() != options.pseudoTerminal)
        throw UsageError("il faut soit --device, soit --pty");
    if (!options.pseudoTerminal &&
        (!options.link.empty() || options.waitsForOpening || options.terminals > 1))
        throw UsageError("--link, --wait-open et --terminals vont avec --pty");
}

void checkDialogue(const TerminalOptions& options) {
    const DialogueOptions& dialogue = options.dialogue;
    if (!needsRecords(dialogue) && dialogue.kind != TerminalKind::kPt630)
        throw UsageError("--connect et --empty sont propres au PT630");
    if (dialogue.announceConnection && dialogue.emptyBatch)
        throw UsageError("--connect et --empty s'excluent");
    if ((dialogue.tabbed || dialogue.lostAck) && !isPolled(dialogue.kind))
        throw UsageError("--tab et --lose-ack sont propres aux types Optimus et ScanPal");
    if (needsRecords(dialogue) == options.recordFile.empty())
        throw UsageError(needsRecords(dialogue) ? "il manque le fichier des enregistrements"
                                                : "ni --connect ni --empty n'attendent de fichier");
}

void takeKind(TerminalOptions& options, const std::string& kind) {
    if (kind.empty()) throw UsageError("il manque le type de terminal");
    try {
        options.dialogue.kind = terminalKindOf(kind);
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
}

}  // namespace

TerminalOptions optionsOf(TerminalOptions options, int terminal) {
    const std::string number = std::to_string(terminal);
    for (std::string* text : {&options.recordFile, &options.link, &options.logFile})
        for (auto at = text->find("{n}"); at != std::string::npos; at = text->find("{n}"))
            text->replace(at, 3, number);
    options.faults.seed += static_cast<std::uint32_t>(terminal - 1);
    return options;
}

TerminalOptions parseTerminalOptions(std::vector<std::string> arguments) {
    TerminalOptions options;
    std::string kind;
    CLI::App app(
        "kalvo-terminal : simulateur de terminaux de saisie et de lecteurs de codes-barres",
        "kalvo-terminal");
    speakFrench(app);
    app.footer(kFooter);
    app.add_option("TYPE", kind, "le terminal simulé");
    app.add_option("FICHIER", options.recordFile, "les enregistrements");
    app.add_option("--files", options.fileFolder,
                   "à la place de TYPE et FICHIER : donne et reçoit les fichiers de ce dossier\n"
                   "(serveur Kermit), jusqu'à ce que le poste y mette fin")
        ->type_name("DOSSIER");
    app.add_option(
           "--capture", options.captureFile,
           "à la place de TYPE et FICHIER : renvoie ce que le terminal avait envoyé dans une\n"
           "capture de la page Ligne du tableau de bord")
        ->type_name("CHEMIN");
    addLine(app, options);
    addSending(app, options);
    addFaults(app, options);
    try {
        // The last argument first: that is how the library wants them.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        options.help = app.help();
        return options;
    } catch (const CLI::ParseError& error) {
        throw UsageError(frenchText(error, app));
    }
    checkLine(options);
    if (options.fileFolder.empty() && options.captureFile.empty()) {
        takeKind(options, kind);
        checkDialogue(options);
    } else if (!kind.empty() || (!options.fileFolder.empty() && !options.captureFile.empty())) {
        throw UsageError("--files et --capture vont sans type ni fichier, et l'un sans l'autre");
    }
    return options;
}

}  // namespace kalvo
