// How far typing is ahead of the application that is typed into, in a Wayland session.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>

#include "platform/wayland/key_sender.h"
#include "platform/wayland/wayland_connection.h"

namespace kalvo {

// The compositor takes keys whether an application reads them or not, and closes the
// connection of one for which too much is waiting. So the kernel is asked now and then how
// much waits in the compositor's connections; where it does not tell, typing keeps to a slow
// pace.
class TargetBacklog {
public:
    TargetBacklog(WaylandConnection& connection, const KeySender& keys);

    // Waits, at most that long, when too much is waiting. False when it was. Costs nothing
    // as long as there is no need to ask.
    [[nodiscard]] bool await(std::chrono::milliseconds limit);

    // Typing pauses: from now on other applications may fall behind.
    void rest() { before_.clear(); }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool tooMuch();

    WaylandConnection& connection_;
    const KeySender& keys_;
    std::string socket_;
    std::uint64_t asked_ = 0;                        // presses before the last question
    std::map<std::uint32_t, std::uint32_t> before_;  // what waited when typing began
    Clock::time_point lastAsked_;                    // and had no reason to wait
    bool behind_ = false;
};

}  // namespace kalvo
