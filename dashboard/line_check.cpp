#include "dashboard/line_check.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "core/reception/pull_dialogue.h"
#include "core/reception/serial_reception.h"
#include "platform/event_pump.h"
#include "text/ansi_text.h"
#include "text/line_capture.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Milliseconds.
constexpr std::uint32_t kAnswerTime = 3'000;
constexpr std::uint32_t kAnswerRest = 200;
constexpr std::uint32_t kListeningTime = 30'000;
constexpr std::uint32_t kListeningRest = 1'000;
constexpr int kPause = 20;

constexpr std::size_t kMostHeard = 100'000;
constexpr std::size_t kMostShown = 60;

// The control characters that frame a text, separate its fields or end them.
constexpr std::string_view kControls = "\t\r\n\x02\x03\x04\x1B\x1C\x1D\x1E\x1F";

bool strange(char character) {
    const auto code = static_cast<unsigned char>(character);
    const bool plain = code >= 0x20 && code < 0x7F;
    return !plain && kControls.find(character) == std::string_view::npos;
}

// A PT630 that says it is there.
bool isGreeting(std::string_view bytes) {
    return bytes.size() > 1 && bytes.ends_with('\xFF') &&
           std::count_if(bytes.begin(), bytes.end(), strange) == 1;
}

std::string counted(std::size_t count, std::string_view thing) {
    return std::to_string(count) + " " + std::string(thing) + (count > 1 ? "s" : "");
}

// The first line that holds something, as it can be shown.
std::string firstLine(std::string_view bytes) {
    bytes.remove_prefix(std::min(bytes.find_first_not_of("\r\n"), bytes.size()));
    const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    return visibleText(bytes.substr(0, std::min(end, kMostShown))) +
           (end > kMostShown ? "..." : "");
}

}  // namespace

LineVerdict verdictOn(std::string_view bytes) {
    if (bytes.empty()) return LineVerdict::kNothing;
    if (isGreeting(bytes)) return LineVerdict::kFrame;
    const auto count = std::count_if(bytes.begin(), bytes.end(), strange);
    if (static_cast<std::size_t>(count) * 5 >= bytes.size()) return LineVerdict::kNoise;
    return bytes.find('\r') == std::string_view::npos ? LineVerdict::kUnended : LineVerdict::kFrame;
}

std::string LineCheck::begin() {
    listening_ = false;
    if (!line_.PortOpen())
        return std::string(
            "Le port n'est pas ouvert : choisissez-le dans le paramétrage, page Connexion."_ansi);
    heard_.clear();
    next_ = line_.since(0).next;
    began_ = lastHeard_ = platform_.events.GetTickCount();
    if (!isPolled(state_.TerminalType)) {
        listening_ = true;
        return std::string(
            "À l'écoute pendant 30 secondes : envoyez maintenant des données depuis le terminal."_ansi);
    }
    try {
        askAndHear();
    } catch (const RuntimeError& error) {
        return error.description();
    }
    return finding();
}

void LineCheck::askAndHear() {
    line_.Output(kReadCommand);
    while (elapsed(began_) < kAnswerTime && (heard_.empty() || elapsed(lastHeard_) < kAnswerRest)) {
        platform_.events.Sleep(kPause);
        hear();
    }
    line_.setPortOpen(false);
    line_.reopen();
}

std::optional<std::string> LineCheck::look() {
    if (!listening_) return std::nullopt;
    hear();
    const bool rests = !heard_.empty() && elapsed(lastHeard_) >= kListeningRest;
    if (!rests && elapsed(began_) < kListeningTime) return std::nullopt;
    listening_ = false;
    return finding();
}

void LineCheck::hear() {
    const LineTap::Traffic traffic = line_.since(next_);
    next_ = traffic.next;
    for (const LineEvent& event : traffic.events) {
        if (event.kind != LineEventKind::kReceived) continue;
        lastHeard_ = platform_.events.GetTickCount();
        if (heard_.size() < kMostHeard) heard_ += event.bytes;
    }
}

std::uint32_t LineCheck::elapsed(std::uint32_t since) {
    return platform_.events.GetTickCount() - since;
}

std::string LineCheck::finding() const {
    std::string line;
    line.append("« "_ansi).append(firstLine(heard_)).append(" »"_ansi);
    const bool polled = isPolled(state_.TerminalType);
    switch (verdictOn(heard_)) {
        case LineVerdict::kNothing:
            return std::string(
                polled
                    ? "Le terminal n'a pas répondu à READ. Vérifiez qu'il est allumé et sur son socle, le câble, le numéro du port et la vitesse."_ansi
                    : "Rien n'est arrivé. Vérifiez que le terminal a bien envoyé pendant l'essai, le câble, le numéro du port et la vitesse."_ansi);
        case LineVerdict::kNoise:
            return counted(heard_.size(), "octet") +
                   std::string(
                       " qui ressemblent à du bruit : la vitesse, la parité ou les bits de donnée du port ("_ansi) +
                   line_.settings() +
                   std::string(") ne sont sans doute pas ceux du terminal."_ansi);
        case LineVerdict::kUnended:
            return std::string("Un texte arrive, "_ansi) + line +
                   std::string(
                       ", mais aucune ligne n'est finie : le terminal doit envoyer un retour chariot (0D) derrière chaque champ."_ansi);
        case LineVerdict::kFrame: break;
    }
    if (polled && firstLine(heard_) == "OVER")
        return std::string(
            "La liaison est bonne : le terminal répond, il n'a rien à envoyer."_ansi);
    const auto lines = static_cast<std::size_t>(std::count(heard_.begin(), heard_.end(), '\r'));
    return std::string("La liaison est bonne : "_ansi) +
           (lines > 0 ? counted(lines, "ligne") + std::string(", la première est "_ansi) : "") +
           line + "." +
           (polled ? std::string(
                         " L'enregistrement n'a pas été acquitté : il reste dans le terminal."_ansi)
                   : "");
}

}  // namespace kalvo
