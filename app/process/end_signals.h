// The signals of a run without windows: end (SIGINT, SIGTERM; Ctrl+C or closing the console on
// Windows), transfer (SIGUSR1; Ctrl+Break), and SIGHUP: the settings again where somebody
// handles that, unless the terminal is closing; the end otherwise.
#pragma once

#include <functional>
#include <memory>

namespace kalvo {

// From construction on the signals are held back; start() hands each of them to its
// handler, on a thread of its own.
class EndSignals {
public:
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals();

    void start(std::function<void()> onEnd, std::function<void()> onTransfer,
               std::function<void()> onReload = nullptr);
    // Signals are held back again: once this returns, no handler runs any more.
    void stop();

private:
    struct Waiting;
    std::unique_ptr<Waiting> waiting_;
};

}  // namespace kalvo
