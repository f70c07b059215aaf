// import: the tables of a Jet database.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "app/process/process_start.h"
#include "platform/jet/jet_import.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"

namespace kalvo {

int runImport(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const JetImportReport imported = importJetDatabase(
        nativeFile(line.file), scenarioDatabase(context.state.scenario.applicationFolder));
    std::string text(imported.alreadyDone ? "Base déjà reprise, rien à faire : "_ansi
                                          : "Base reprise : "_ansi);
    text += std::to_string(imported.scenarios);
    text += " scénarios, "_ansi;
    text += std::to_string(imported.actions) + " actions";
    writeErrorLine(text);
    return kExitSuccess;
}

}  // namespace kalvo
