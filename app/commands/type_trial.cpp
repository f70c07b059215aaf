#include "app/commands/type_trial.h"

#include <string>

#include "app/commands/command_line.h"
#include "app/console_user_interface.h"
#include "core/manner_trial.h"
#include "settings/manner_keys.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kTimeToChoose = 5000;  // milliseconds, to bring the window to the front

std::string entryOf(const MannerTrial& trial) {
    std::string entry = "[" + (trial.application.empty() ? "*" : trial.application) + "]\n";
    for (int i = 0; i < kMannerKeys; ++i) {
        const auto key = static_cast<MannerKey>(i);
        const std::string text = textOf(trial.manner, key);
        if (!text.empty()) entry.append(mannerKey(key).name).append("=" + text + "\n");
    }
    return entry;
}

}  // namespace

int runTypeTrial(CommandContext& context) {
    writeErrorLine(
        "Mettez le curseur dans un champ de texte vide : l'essai commence dans 5 s."_ansi);
    context.events.Sleep(kTimeToChoose);
    const MannerTrial trial = tryManners(context.platform());
    if (!wantsEntry(trial)) {
        writeErrorLine(verdictOf(trial));
        return trial.outcome == TrialOutcome::kExact ? kExitSuccess : kExitFailure;
    }
    writeErrorLine("Exact avec ces lignes, à ajouter à Applications.ini :"_ansi);
    writeOutput(toUtf8(entryOf(trial)));
    return kExitSuccess;
}

}  // namespace kalvo
