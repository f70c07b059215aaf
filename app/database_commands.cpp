// compile and import: the scenario database and the files made from it.
#include "app/application_folder.h"
#include "app/command_context.h"
#include "app/commands.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Every scenario's name, in the order of the table.
std::vector<std::string> scenarioNames(Database& database) {
    std::vector<std::string> names;
    for (const auto rows = database.OpenRecordset("SELECT Nom FROM Scenarios"); !rows->Eof();
         rows->MoveNext())
        names.push_back(textField(*rows, "Nom"));
    return names;
}

bool compileByName(CommandContext& context, Database& database, const std::string& name) {
    const auto numero = findScenario(database, name);
    if (!numero) {
        writeErrorLine(std::string("Scénario inconnu : "_ansi) + name);
        return false;
    }
    const std::string_view folder = context.state.scenario.applicationFolder;
    const bool complete = CompileScenario(context.platform(), database, folder, *numero);
    if (!complete)
        writeErrorLine(std::string("Le fichier du scénario n'a pas pu être écrit : "_ansi) +
                       scenarioFile(folder, name));
    return complete;
}

}  // namespace

int runCompile(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const auto database = bindings.databases->OpenDatabase(
        scenarioDatabase(context.state.scenario.applicationFolder));
    const auto names = line.all ? scenarioNames(*database) : line.arguments;
    bool complete = true;
    for (const std::string& name : names) complete &= compileByName(context, *database, name);
    return complete ? kExitSuccess : kExitFailure;
}

int runImport(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const std::string target = scenarioDatabase(context.state.scenario.applicationFolder);
    const JetUpgradeNotice notice = importJetFile(line.arguments.front(), target);
    std::string text = "Base reprise : ";
    text += std::to_string(notice.scenarios);
    text += " scénarios, "_ansi;
    text += std::to_string(notice.actions) + " actions";
    writeErrorLine(text);
    return kExitSuccess;
}

}  // namespace kalvo
