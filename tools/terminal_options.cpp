#include "tools/terminal_options.h"

#include <charconv>
#include <functional>
#include <limits>
#include <map>

namespace kalvo {

namespace {

constexpr std::string_view kHelp =
    R"(kalvo-terminal : simulateur de terminaux de saisie et de lecteurs de codes-barres

Usage : kalvo-terminal TYPE (--device CHEMIN | --pty [--link CHEMIN]) [options] [FICHIER]
        kalvo-terminal --files DOSSIER (--device CHEMIN | --pty [--link CHEMIN]) [options]

TYPE     HT630, PT630 (envoient un lot d'eux-mêmes), Optimus ou ScanPal
         (attendent READ, puis un ACK par enregistrement)
FICHIER  un enregistrement par ligne, champs séparés par ";" ("-" : entrée standard)

--files DOSSIER    donne et reçoit les fichiers de ce dossier (serveur Kermit), jusqu'à ce
                   que le poste y mette fin

Liaison
  --device CHEMIN    port série ou pseudo-terminal existant
  --settings TEXTE   réglages du port série (9600,N,8,1)
  --pty              crée un pseudo-terminal, dont le chemin est la première ligne affichée
  --link CHEMIN      lien symbolique vers ce pseudo-terminal
  --wait-open        attend que l'autre programme ait ouvert le pseudo-terminal
  --linger MS        garde le pseudo-terminal après le dernier envoi (1000)

Envoi
  --separator C      séparateur de champs du fichier (";", TAB pour la tabulation)
  --speed BAUDS      au rythme de la ligne, 10 bits par caractère (sans limite)
  --repeat N         nombre de lots (1)
  --wait MS          attente avant chaque lot (0)
  --connect          PT630 : envoie le texte de connexion à la place du lot
  --empty            PT630 : envoie un lot vide
  --tab              Optimus, ScanPal : lignes qui commencent par TAB
  --ack              Optimus, ScanPal : répond ACK aux commandes
  --read-timeout MS  attente de READ (0 : sans limite)
  --ack-timeout MS   attente de ACK avant un nouvel envoi (2000)
  --resend N         nouveaux envois d'un enregistrement (3)

Défauts
  --noise TAUX       octets parasites, probabilité de 0 à 1 par caractère
  --pause MS:N       silence de MS millisecondes après N caractères
  --cut N            perd la moitié de la ligne N au premier envoi
  --lose-ack N       perd le N-ième ACK reçu
  --seed N           graine du hasard (1)

  --help             cette aide

Code de retour : 0 envoyé, 1 échec, 2 appel incorrect.
)";

template <typename Number>
Number numberOf(const std::string& option, std::string_view text, Number lowest, Number highest) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc{} || result.ptr != end || !(number >= lowest && number <= highest))
        throw UsageError(option + " : valeur non valide : " + std::string(text));
    return number;
}

constexpr int kMost = 1000000;
constexpr std::int64_t kLongest = 86400000;  // ms: a day

int countOf(const std::string& option, const std::string& text) {
    return numberOf(option, text, 1, kMost);
}

std::int64_t timeOf(const std::string& option, const std::string& text) {
    return numberOf(option, text, std::int64_t{0}, kLongest);
}

LineFaults::Pause pauseOf(const std::string& option, const std::string& text) {
    const auto colon = text.find(':');
    if (colon == std::string::npos) throw UsageError(option + " : attend MS:N");
    return {timeOf(option, text.substr(0, colon)),
            numberOf(option, std::string_view(text).substr(colon + 1), std::size_t{0},
                     std::numeric_limits<std::size_t>::max())};
}

char separatorOf(const std::string& option, const std::string& text) {
    if (text == "TAB") return '\t';
    if (text.size() != 1) throw UsageError(option + " : un seul caractère");
    return text[0];
}

using Flag = std::function<void(TerminalOptions&)>;
using Setting =
    std::function<void(TerminalOptions&, const std::string& option, const std::string& value)>;

const std::map<std::string, Flag, std::less<>>& flags() {
    static const std::map<std::string, Flag, std::less<>> table = {
        {"--help", [](auto& o) { o.help = true; }},
        {"--pty", [](auto& o) { o.pseudoTerminal = true; }},
        {"--wait-open", [](auto& o) { o.waitsForOpening = true; }},
        {"--connect", [](auto& o) { o.dialogue.announceConnection = true; }},
        {"--empty", [](auto& o) { o.dialogue.emptyBatch = true; }},
        {"--tab", [](auto& o) { o.dialogue.tabbed = true; }},
        {"--ack", [](auto& o) { o.dialogue.sendsAckLines = true; }},
    };
    return table;
}

const std::map<std::string, Setting, std::less<>>& settings() {
    using std::string;
    static const std::map<string, Setting, std::less<>> table = {
        {"--device", [](auto& o, auto&, auto& v) { o.device = v; }},
        {"--files", [](auto& o, auto&, auto& v) { o.fileFolder = v; }},
        {"--settings", [](auto& o, auto&, auto& v) { o.settings = v; }},
        {"--link", [](auto& o, auto&, auto& v) { o.link = v; }},
        {"--linger", [](auto& o, auto& n, auto& v) { o.lingerMilliseconds = timeOf(n, v); }},
        {"--separator", [](auto& o, auto& n, auto& v) { o.separator = separatorOf(n, v); }},
        {"--speed",
         [](auto& o, auto& n, auto& v) { o.faults.speed = numberOf(n, v, 1U, 4000000U); }},
        {"--repeat", [](auto& o, auto& n, auto& v) { o.dialogue.batches = countOf(n, v); }},
        {"--wait", [](auto& o, auto& n, auto& v) { o.dialogue.waitMilliseconds = timeOf(n, v); }},
        {"--read-timeout",
         [](auto& o, auto& n, auto& v) { o.dialogue.readTimeout = timeOf(n, v); }},
        {"--ack-timeout",
         [](auto& o, auto& n, auto& v) {
             o.dialogue.ackTimeout = numberOf(n, v, std::int64_t{1}, kLongest);
         }},
        {"--resend",
         [](auto& o, auto& n, auto& v) { o.dialogue.resends = numberOf(n, v, 0, kMost); }},
        {"--noise", [](auto& o, auto& n, auto& v) { o.faults.noise = numberOf(n, v, 0.0, 1.0); }},
        {"--pause", [](auto& o, auto& n, auto& v) { o.faults.pauses.push_back(pauseOf(n, v)); }},
        {"--cut", [](auto& o, auto& n, auto& v) { o.dialogue.cutRecord = countOf(n, v); }},
        {"--lose-ack", [](auto& o, auto& n, auto& v) { o.dialogue.lostAck = countOf(n, v); }},
        {"--seed",
         [](auto& o, auto& n, auto& v) {
             o.faults.seed = numberOf(n, v, std::uint32_t{0}, std::uint32_t{0xFFFFFFFF});
         }},
    };
    return table;
}

bool needsRecords(const DialogueOptions& dialogue) {
    return !dialogue.announceConnection && !dialogue.emptyBatch;
}

void check(const TerminalOptions& options) {
    if (options.device.empty() != options.pseudoTerminal)
        throw UsageError("il faut soit --device, soit --pty");
    if (!options.pseudoTerminal && (!options.link.empty() || options.waitsForOpening))
        throw UsageError("--link et --wait-open vont avec --pty");
}

void checkDialogue(const TerminalOptions& options) {
    const DialogueOptions& dialogue = options.dialogue;
    if (!needsRecords(dialogue) && dialogue.kind != TerminalKind::kPt630)
        throw UsageError("--connect et --empty sont propres au PT630");
    if (dialogue.announceConnection && dialogue.emptyBatch)
        throw UsageError("--connect et --empty s'excluent");
    if ((dialogue.tabbed || dialogue.sendsAckLines || dialogue.lostAck) && !isPolled(dialogue.kind))
        throw UsageError("--tab, --ack et --lose-ack sont propres aux types Optimus et ScanPal");
    if (needsRecords(dialogue) == options.recordFile.empty())
        throw UsageError(needsRecords(dialogue) ? "il manque le fichier des enregistrements"
                                                : "ni --connect ni --empty n'attendent de fichier");
}

void takePositional(TerminalOptions& options, const std::vector<std::string>& positional) {
    if (positional.empty()) throw UsageError("il manque le type de terminal");
    if (positional.size() > 2) throw UsageError("argument en trop : " + positional[2]);
    try {
        options.dialogue.kind = terminalKindOf(positional[0]);
    } catch (const std::invalid_argument& error) {
        throw UsageError(error.what());
    }
    if (positional.size() == 2) options.recordFile = positional[1];
}

}  // namespace

TerminalOptions parseTerminalOptions(const std::vector<std::string>& arguments) {
    TerminalOptions options;
    std::vector<std::string> positional;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (const auto flag = flags().find(*argument); flag != flags().end()) {
            flag->second(options);
        } else if (const auto setting = settings().find(*argument); setting != settings().end()) {
            if (argument + 1 == arguments.end()) throw UsageError(*argument + " : valeur absente");
            const std::string& option = *argument;
            setting->second(options, option, *++argument);
        } else if (argument->size() > 1 && argument->front() == '-') {
            throw UsageError("option inconnue : " + *argument);
        } else {
            positional.push_back(*argument);
        }
    }
    if (options.help) return options;
    check(options);
    if (!options.fileFolder.empty()) {
        if (!positional.empty()) throw UsageError("--files va sans type ni fichier");
        return options;
    }
    takePositional(options, positional);
    checkDialogue(options);
    return options;
}

std::string_view terminalHelp() { return kHelp; }

}  // namespace kalvo
