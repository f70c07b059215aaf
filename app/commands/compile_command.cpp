// compile: scenario files from the database.
#include "app/commands/command_context.h"
#include "app/commands/commands.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

bool compileByName(CommandContext& context, Database& database, const std::string& name) {
    const auto numero = findScenario(database, name);
    if (!numero) {
        writeErrorLine(std::string("Scénario inconnu : "_ansi) + name);
        return false;
    }
    const std::string_view folder = context.state.scenario.applicationFolder;
    const Compilation compilation = CompileScenario(context.platform(), database, folder, *numero);
    const auto say = [&](const std::string& text) {
        writeErrorLine(std::string("Scénario « "_ansi) + name + std::string(" » : "_ansi) + text);
    };
    for (const std::string& warning : compilation.warnings) say(warning);
    if (!compilation.complete)
        say(compilation.problem.empty() ? std::string("compilation incomplète"_ansi)
                                        : compilation.problem);
    return compilation.complete;
}

// Whatever is wrong with one, the others may be well.
bool compileOrSay(CommandContext& context, Database& database, const std::string& name) {
    try {
        return compileByName(context, database, name);
    } catch (const RuntimeError& error) {
        writeErrorLine(std::string("Scénario « "_ansi) + name + std::string(" » : "_ansi) +
                       error.description());
        return false;
    }
}

}  // namespace

int runCompile(const CommandLine& line, SystemBindings& bindings) {
    CommandContext context(bindings);
    const auto database = bindings.databases->OpenDatabase(
        scenarioDatabase(context.state.scenario.applicationFolder));
    const auto names =
        line.allScenarios ? scenarioNames(*database) : std::vector{fromUtf8(line.scenario)};
    bool complete = true;
    for (const std::string& name : names) complete &= compileOrSay(context, *database, name);
    return complete ? kExitSuccess : kExitFailure;
}

}  // namespace kalvo
