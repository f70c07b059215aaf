// An X server of the test's own, with its keyboard set as a test wants it.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace kalvo::testing {

// Xvfb, from construction to destruction.
class XServer {
public:
    XServer() {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("pipe");
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            const int nothing = open("/dev/null", O_WRONLY);
            dup2(nothing, STDOUT_FILENO);
            dup2(nothing, STDERR_FILENO);
            prctl(PR_SET_PDEATHSIG, SIGKILL);  // also when a test is killed
            const std::string number = std::to_string(ends[1]);
            execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "640x480x24",
                   "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
            _exit(127);
        }
        close(ends[1]);
        char c = 0;
        while (read(ends[0], &c, 1) == 1 && c != '\n') name_ += c;
        close(ends[0]);
        if (name_.empty()) throw std::runtime_error("Xvfb does not start");
        name_.insert(0, ":");
    }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer() {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }

    [[nodiscard]] const char* display() const { return name_.c_str(); }

    // Sets the layouts, as setxkbmap does ("us", "us,fr"); `options` are more of its
    // arguments.
    void setLayout(const std::string& layout, const std::string& options = "") const {
        const std::string command =
            "setxkbmap -display " + name_ + " " + options + " " + layout + " 2>/dev/null";
        if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
    }

private:
    pid_t process_ = -1;
    std::string name_;
};

}  // namespace kalvo::testing
