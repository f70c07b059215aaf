#include "app/process/process_start.h"

#include <linux/close_range.h>
#include <unistd.h>

#include <csignal>

namespace kalvo {

namespace {

char** startArguments = nullptr;

}  // namespace

std::vector<std::string> beginProcess(int argc, char** argv) {
    startArguments = argv;
    return {argv + 1, argv + argc};
}

void restartProcess() {
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    // Signals that are held back here would be held back there.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execv("/proc/self/exe", startArguments);
}

long processId() { return getpid(); }

}  // namespace kalvo
