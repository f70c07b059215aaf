#include "core/batch_report.h"

#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

std::string counted(std::int64_t count, std::string_view one, std::string_view more) {
    return std::to_string(count) + " " + std::string(count > 1 ? more : one);
}

// How to get at a batch that is not done.
std::string inTheJournal(const BatchReport& report) {
    if (report.batch == 0) return {};
    return std::string(" (lot "_ansi) + std::to_string(report.batch) +
           std::string(" du journal)"_ansi);
}

std::string joined(std::string text, std::string_view more) {
    if (text.empty() || more.empty()) return text.append(more);
    return text.append(" ; ").append(more);
}

std::string withRemarks(const BatchReport& report, std::string text) {
    return joined(std::move(text), remarksText(report));
}

std::string touchedText(const BatchReport& report) {
    if (report.touched.empty()) return {};
    std::string numbers;
    for (const std::int32_t pass : report.touched)
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(pass);
    return (report.touched.size() > 1 ? "enregistrements " : "enregistrement ") + numbers +
           std::string(" à vérifier (touche pressée pendant la saisie)"_ansi);
}

// Where typed keys went; of a file the short text tells.
std::string placeOf(const BatchReport& report) {
    if (report.outcome != BatchReport::Outcome::kTyped) return {};
    if (report.target.empty()) return " dans l'application active";
    return std::string(" dans « "_ansi) + report.target + std::string(" »"_ansi);
}

}  // namespace

std::string untypedText(std::string_view untyped) {
    if (untyped.empty()) return {};
    return std::string("caractères non saisis : "_ansi)
        .append(untyped)
        .append(" (la méthode presse-papiers les saisirait)"_ansi);
}

std::string remarksText(const BatchReport& report) {
    return joined(touchedText(report), untypedText(report.untyped));
}

std::string shortText(const BatchReport& report) {
    switch (report.outcome) {
        case BatchReport::Outcome::kTyped:
            return withRemarks(
                report, counted(report.passes, "enregistrement saisi", "enregistrements saisis"));
        case BatchReport::Outcome::kWritten:
            return counted(report.passes, "enregistrement", "enregistrements") +
                   std::string(" dans "_ansi) + report.target;
        case BatchReport::Outcome::kInterrupted:
            return withRemarks(report,
                               std::string("Saisie arrêtée après "_ansi) +
                                   counted(report.passesDone, "enregistrement", "enregistrements") +
                                   " sur " + std::to_string(report.passes) + " : " + report.reason +
                                   inTheJournal(report));
        case BatchReport::Outcome::kNothing:
            return std::string("Rien à saisir : "_ansi) + report.reason + inTheJournal(report);
        case BatchReport::Outcome::kFailed: break;
    }
    const std::string_view what = report.replayed     ? "Rejeu échoué : "_ansi
                                  : report.batch == 0 ? "Lot perdu : "_ansi
                                                      : "Lot gardé : "_ansi;
    return std::string(what) + report.reason + inTheJournal(report);
}

std::string suspensionText(const BatchReport& report) {
    return withRemarks(report, std::string("Saisie suspendue à l'enregistrement "_ansi) +
                                   std::to_string(report.passesDone + 1) + " sur " +
                                   std::to_string(report.passes) + " : " + report.reason);
}

std::string longText(const BatchReport& report) {
    if (!report.whole()) return shortText(report);
    return std::string("Trame traitée : "_ansi) + shortText(report) + placeOf(report) + ", " +
           counted(static_cast<std::int64_t>(report.characters), "caractère"_ansi,
                   "caractères"_ansi) +
           ", " + std::to_string(report.milliseconds) + " ms";
}

LogLevel levelOf(const BatchReport& report) {
    if (report.outcome == BatchReport::Outcome::kFailed) return LogLevel::kError;
    return report.whole() && remarksText(report).empty() ? LogLevel::kInformation
                                                         : LogLevel::kWarning;
}

void logReport(Log& log, const BatchReport& report) {
    log.write(levelOf(report), longText(report));
}

}  // namespace kalvo
