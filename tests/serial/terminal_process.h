// A running kalvo-terminal.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/serial/test_pump.h"

namespace kalvo::testing {

// Starts the program with these arguments and reads what it says on both outputs.
class TerminalProcess {
public:
    explicit TerminalProcess(std::vector<std::string> arguments) {
        std::array<int, 2> out{};
        if (pipe2(out.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        arguments.insert(arguments.begin(), KALVO_TERMINAL_PROGRAM);
        std::vector<char*> argv;
        argv.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        process_ = fork();
        if (process_ == 0) {
            dup2(out[1], STDOUT_FILENO);
            dup2(out[1], STDERR_FILENO);
            execv(argv[0], argv.data());
            _exit(127);
        }
        close(out[1]);
        output_ = out[0];
    }
    ~TerminalProcess() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(output_);
    }
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;

    // The next line of output without its end; what there is at the end of output.
    std::string readLine() {
        std::string line;
        char character = 0;
        while (readable() && read(output_, &character, 1) == 1 && character != '\n')
            line.push_back(character);
        return line;
    }

    void terminate() const { kill(process_, SIGTERM); }

    // The exit code, once the program ended; -1 for an end by a signal or none in time.
    int exitCode() {
        int status = 0;
        const bool ended =
            waitUntil([&] { return waitpid(process_, &status, WNOHANG) == process_; });
        if (!ended) return -1;
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    [[nodiscard]] bool readable() const {
        pollfd entry{output_, POLLIN, 0};
        return poll(&entry, 1, static_cast<int>(std::chrono::milliseconds(kDeadline).count())) > 0;
    }

    pid_t process_ = -1;
    int output_ = -1;
};

}  // namespace kalvo::testing
