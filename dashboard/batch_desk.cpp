#include "dashboard/batch_desk.h"

#include <algorithm>
#include <utility>

#include "dashboard/batch_look.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// How many records the batch has been found to have, or seems to have.
std::int32_t lastRecord(const JournalEntry& entry) {
    return std::max({entry.passes, entry.passes > 0 ? 0 : entry.records, 1});
}

std::string rangeTo(std::int32_t last) {
    return std::string(" (1 à "_ansi) + std::to_string(last) + ")";
}

// 0 for a text that is no number.
std::int32_t numberOf(std::string_view text) {
    try {
        return requiredIntegerPart(text);
    } catch (const RuntimeError&) {
        return 0;
    }
}

}  // namespace

BatchDesk::BatchDesk(const Platform& platform, const RunTimeState& state, JournalFile& journal,
                     Retype retype)
    : platform_(platform), state_(state), journal_(journal), retype_(std::move(retype)) {}

bool BatchDesk::possible() {
    if (scenarioInForce(state_)) return true;
    platform_.dialogs.message(
        "Aucun scénario n'est en service : choisissez-en un dans le paramétrage."_ansi,
        kApplicationTitle, MessageIcon::kExclamation);
    return false;
}

void BatchDesk::retype(const JournalEntry& entry) {
    if (!possible()) return;
    const bool done = entry.state == BatchState::kTyped || entry.state == BatchState::kWritten;
    if (done && !platform_.dialogs.confirm(
                    std::string("Le lot "_ansi) + std::to_string(entry.id) +
                        std::string(" a déjà été traité en entier. Le refaire ?"_ansi),
                    kApplicationTitle, MessageIcon::kQuestion))
        return;
    start(entry, 1);
}

void BatchDesk::retypeFrom(const JournalEntry& entry) {
    if (!possible()) return;
    const std::int32_t last = lastRecord(entry);
    const std::int32_t proposed = std::min(entry.passesDone + 1, last);
    const auto answer = platform_.dialogs.inputBox(
        std::string("Retaper le lot "_ansi) + std::to_string(entry.id) +
            std::string(" à partir de l'enregistrement"_ansi) + rangeTo(last) + " :",
        kApplicationTitle, std::to_string(proposed));
    if (!answer) return;
    const std::int32_t from = numberOf(*answer);
    if (from < 1 || from > last) {
        platform_.dialogs.message(
            std::string("Le lot n'a pas d'enregistrement de ce numéro"_ansi) + rangeTo(last) + ".",
            kApplicationTitle, MessageIcon::kExclamation);
        return;
    }
    start(entry, from);
}

void BatchDesk::start(const JournalEntry& entry, std::int32_t fromPass) {
    retype_(entry.id, journal_.bytes(entry.id), fromPass);
}

void BatchDesk::saveAsText(const JournalEntry& entry) {
    const std::string file = platform_.dialogs.saveFile(
        "lot-" + std::to_string(entry.id) + ".txt", "Fichiers texte (*.txt)|*.txt|Tous (*.*)|*.*");
    if (!file.empty()) platform_.files.replace(file, journal_.bytes(entry.id));
}

}  // namespace kalvo
