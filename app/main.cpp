// kalvo-horizon: the composition root. The command line decides which part of the
// program runs; nothing else creates bindings.
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "app/commands/command_context.h"
#include "app/commands/command_line.h"
#include "app/commands/commands.h"
#include "app/process/process_start.h"
#ifdef KALVO_DESKTOP
#include "app/desktop/run_desktop.h"
#endif
#include "text/ansi_text.h"

namespace {

using kalvo::SystemBindings;

#ifndef KALVO_DESKTOP
using kalvo::literals::operator""_ansi;

// A build for machines without windows.
int runDesktop(const kalvo::CommandLine&, SystemBindings&) {
    kalvo::writeErrorLine(
        "Ce programme a été construit sans fenêtres ; utilisez kalvo-horizon listen"_ansi);
    return kalvo::kExitFailure;
}
#else
using kalvo::runDesktop;
#endif

int run(std::vector<std::string> arguments) {
    std::string problem;
    const auto line = kalvo::parseCommandLine(std::move(arguments), problem);
    if (!line) {
        kalvo::writeErrorLine(
            kalvo::fromUtf8("kalvo-horizon : " + problem + " (--help pour l'aide)"));
        return kalvo::kExitUsage;
    }
    if (line->answer) {
        kalvo::writeOutput(*line->answer);
        return kalvo::kExitSuccess;
    }
    if (line->autostart) return kalvo::runAutostart(*line);
    SystemBindings bindings = kalvo::createSystemBindings(line->applicationFolder);
    bindings.keyboard = line->keyboard;
    const kalvo::Command* const command = line->command;
    return command == nullptr ? runDesktop(*line, bindings) : command->run(*line, bindings);
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
