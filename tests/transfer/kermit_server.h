// A Kermit server that nobody here wrote, at the other end of a cable that can fail.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <string>
#include <thread>

#include "tests/serial/pty.h"

namespace kalvo::testing {

// Two pseudo-terminals and a thread that carries bytes between them.
class Cable {
public:
    Cable() : thread_([this] { run(); }) {}
    ~Cable() {
        stopped_ = true;
        thread_.join();
    }
    Cable(const Cable&) = delete;
    Cable& operator=(const Cable&) = delete;

    Pty client;
    Pty server;
    std::atomic<bool> silent{false};   // everything is lost
    std::atomic<std::size_t> flip{0};  // every so many bytes one is disturbed; 0: none
    std::atomic<std::size_t> drop{0};  // every so many bytes one is missing
    std::atomic<std::size_t> carried{0};

private:
    void run() {
        while (!stopped_) {
            std::array<pollfd, 2> ends{
                {{client.master(), POLLIN, 0}, {server.master(), POLLIN, 0}}};
            poll(ends.data(), ends.size(), 5);
            const bool moved = carry(client, server);
            if (!carry(server, client) && !moved) usleep(100);
        }
    }

    bool carry(Pty& from, Pty& to) {
        std::string bytes = from.receiveWaiting();
        if (bytes.empty()) return false;
        if (flip == 0 && drop == 0) {
            if (!silent) (void)to.send(bytes);
            return true;
        }
        std::string arrived;
        for (const char byte : bytes) {
            const std::size_t number = ++carried;
            if (drop != 0 && number % drop == 0) continue;
            const bool disturbed = flip != 0 && number % flip == 0;
            arrived.push_back(static_cast<char>(disturbed ? byte ^ 0x15 : byte));
        }
        if (!silent) (void)to.send(arrived);
        return true;
    }

    std::atomic<bool> stopped_{false};
    std::thread thread_;
};

// ckermit as a server in a folder. `setting` is a command of its own, such as
// "set block-check 2", or the path of the terminal simulator, which serves instead.
class KermitServer {
public:
    KermitServer(const std::string& device, const std::string& folder, const std::string& setting) {
        const std::string script =
            "set line " + device +
            ", set carrier-watch off, set speed 115200, set flow none, "
            "set transfer mode manual, set file type binary, set file names literal, set file "
            "collision overwrite, enable delete, " +
            setting + ", server, exit";
        process_ = fork();
        if (process_ != 0) return;
        const int nothing = open("/dev/null", O_RDWR);
        for (int stream = 0; stream < 3; ++stream) dup2(nothing, stream);
        if (setting.starts_with('/'))
            execl(setting.c_str(), "kalvo-terminal", "--files", folder.c_str(), "--device",
                  device.c_str(), nullptr);
        if (chdir(folder.c_str()) != 0) _exit(126);
        execlp("kermit", "kermit", "-Y", "-C", script.c_str(), nullptr);
        _exit(127);
    }
    ~KermitServer() { stop(); }
    KermitServer(const KermitServer&) = delete;
    KermitServer& operator=(const KermitServer&) = delete;

    void stop() {
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = -1;
    }

private:
    pid_t process_;
};

}  // namespace kalvo::testing
