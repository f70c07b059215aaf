// kalvo-horizon: the composition root. The command line decides which part of the
// program runs; nothing else creates bindings.
#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_context.h"
#include "app/command_line.h"
#include "app/commands.h"
#include "app/process_start.h"
#ifdef KALVO_DESKTOP
#include "app/desktop_program.h"
#endif
#include "text/ansi_text.h"

namespace {

using kalvo::CommandLine;
using kalvo::SystemBindings;
using kalvo::literals::operator""_ansi;

#ifndef KALVO_DESKTOP
// A build for machines without windows.
int runDesktop(const CommandLine&, SystemBindings&) {
    kalvo::writeErrorLine(
        "Ce programme a été construit sans fenêtres ; utilisez kalvo-horizon listen"_ansi);
    return kalvo::kExitFailure;
}
#else
using kalvo::runDesktop;
#endif

using Command = int (*)(const CommandLine&, SystemBindings&);

const std::map<std::string_view, Command>& commands() {
    static const std::map<std::string_view, Command> table = {
        {"", runDesktop},
        {"listen", kalvo::runListen},
        {"compile", kalvo::runCompile},
        {"script", kalvo::runScript},
        {"events", kalvo::runEvents},
        {"type", kalvo::runType},
        {"replay", kalvo::runReplay},
        {"import", kalvo::runImport},
        {"ports", kalvo::runPorts},
    };
    return table;
}

int run(const std::vector<std::string>& arguments) {
    std::string problem;
    const auto line = kalvo::parseCommandLine(arguments, problem);
    if (!line) {
        kalvo::writeErrorLine(problem);
        std::fputs(kalvo::toUtf8(kalvo::usageText()).c_str(), stderr);
        return kalvo::kExitUsage;
    }
    if (line->help) {
        kalvo::writeOutput(kalvo::toUtf8(kalvo::usageText()));
        return kalvo::kExitSuccess;
    }
    if (line->version) {
        kalvo::writeOutput("kalvo-horizon " KALVO_VERSION "\n");
        return kalvo::kExitSuccess;
    }
    if (line->autostart) return kalvo::runAutostart(*line);
    SystemBindings bindings = kalvo::createSystemBindings(line->applicationFolder);
    return commands().at(line->command)(*line, bindings);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(kalvo::beginProcess(argc, argv));
    } catch (const kalvo::RuntimeError& error) {
        kalvo::writeErrorLine(kalvo::errorText(error));
    } catch (const kalvo::ProgramEnd&) {
        return kalvo::kExitSuccess;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kalvo-horizon : %s\n", error.what());
    }
    return kalvo::kExitFailure;
}
