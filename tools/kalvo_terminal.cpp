// kalvo-terminal: a simulated terminal on a serial device or a pseudo-terminal.
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

#include "platform/asio/native_line.h"
#include "platform/linux/linux_file_system.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"
#include "tools/capture_player.h"
#include "tools/faulty_line.h"
#include "tools/kermit_file_server.h"
#include "tools/posix_terminal_line.h"
#include "tools/terminal_dialogue.h"
#include "tools/terminal_options.h"
#include "tools/terminal_transfer_line.h"

namespace kalvo {

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kMisused = 2 };

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    if (path == "-") {
        content << std::cin.rdbuf();
        return content.str();
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("fichier illisible : " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<TerminalRecord> recordsOf(const TerminalOptions& options) {
    if (options.recordFile.empty()) return {};
    return parseRecords(contentOf(options.recordFile), options.separator);
}

std::int64_t epochTime() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

void talk(TerminalLine& line, const TerminalOptions& options,
          const std::vector<TerminalRecord>& records) {
    FaultyLine faulty(line, options.faults);
    if (!options.fileFolder.empty()) {
        TerminalTransferLine transferLine(faulty);
        LinuxFileSystem files;
        return KermitFileServer(transferLine, files, fromUtf8(options.fileFolder)).run();
    }
    if (!options.captureFile.empty())
        return playCapture(faulty, parseCapture(contentOf(options.captureFile)));
    TerminalDialogue dialogue(faulty, options.dialogue);
    std::ofstream log;
    if (!options.logFile.empty()) {
        log.open(options.logFile, std::ios::app);
        dialogue.onDelivered([&](int number) { log << number << ' ' << epochTime() << std::endl; });
    }
    dialogue.run(records);
}

// One of the terminals: its pseudo-terminal is there before any of them talks.
struct Simulation {
    explicit Simulation(TerminalOptions own)
        : options(std::move(own)), records(recordsOf(options)), terminal(options.link) {}

    void run() {
        try {
            if (options.waitsForOpening) terminal.waitUntilOpened();
            talk(terminal.line(), options, records);
            // Closing throws away what the other side has not read yet.
            terminal.line().pause(options.lingerMilliseconds);
        } catch (...) {
            failure = std::current_exception();
        }
    }

    TerminalOptions options;
    std::vector<TerminalRecord> records;
    PseudoTerminal terminal;
    std::exception_ptr failure;
};

void talkOnPseudoTerminals(const TerminalOptions& options) {
    std::deque<Simulation> simulations;
    for (int number = 1; number <= options.terminals; ++number) {
        simulations.emplace_back(optionsOf(options, number));
        std::cout << simulations.back().terminal.slavePath() << std::endl;
    }
    {
        std::vector<std::jthread> threads;
        for (Simulation& simulation : simulations)
            threads.emplace_back([&simulation] { simulation.run(); });
    }
    for (const Simulation& simulation : simulations)
        if (simulation.failure) std::rethrow_exception(simulation.failure);
}

void talkOnDevice(const TerminalOptions& options, const std::vector<TerminalRecord>& records) {
    const LineSettings settings = parseLineSettings(options.settings);
    PosixTerminalLine line(openNativeLine(options.device, settings, Handshaking::kNone),
                           PosixTerminalLine::Side::kDevice);
    talk(line, options, records);
    while (hasUnsentOutput(line.descriptor())) line.pause(1);
    releaseNativeLine(line.descriptor());
}

void run(const TerminalOptions& options) {
    interruptOnSignals();
    if (options.pseudoTerminal)
        talkOnPseudoTerminals(options);
    else
        talkOnDevice(options, recordsOf(options));
}

int fail(ExitCode code, const std::string& text) {
    std::cerr << "kalvo-terminal : " << text << "\n";
    return code;
}

int start(const std::vector<std::string>& arguments) {
    try {
        const TerminalOptions options = parseTerminalOptions(arguments);
        if (options.help.empty())
            run(options);
        else
            std::cout << options.help;
        return kDone;
    } catch (const UsageError& error) {
        return fail(kMisused, std::string(error.what()) + " (--help pour l'aide)");
    } catch (const RuntimeError& error) {
        return fail(kFailed, toUtf8(error.description()));
    } catch (const std::exception& error) {
        return fail(kFailed, error.what());
    }
}

}  // namespace

}  // namespace kalvo

int main(int argc, char** argv) {
    return kalvo::start(std::vector<std::string>(argv + 1, argv + argc));
}
