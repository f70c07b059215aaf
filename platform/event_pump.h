// The event loop of the program, and time.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/clock.h"

namespace kalvo {

// Thrown by DoEvents once the program has been asked to end: whatever is going on
// unwinds to the event loop, which closes the port and lets go of the keys. Not a
// run-time error, so that no statement that skips errors passes over it.
struct ProgramEnd {};

class EventPump {
public:
    virtual ~EventPump() = default;

    // Delivers everything that is waiting and returns. May be called from inside
    // a handler. Rests for at most a millisecond when it is called over and over
    // with nothing to deliver. Throws ProgramEnd once the program has been asked to
    // end.
    virtual void DoEvents() = 0;

    // The same, but rests until something has to be delivered, at most that long.
    virtual void waitForEvents(int milliseconds) = 0;

    // Lets windows answer the user in the middle of something: what was posted waits.
    virtual void answerUser() {}

    // Whether the program has been asked to end.
    [[nodiscard]] virtual bool ending() = 0;

    // Stops the program's thread; no event is delivered meanwhile.
    virtual void Sleep(int milliseconds) = 0;

    // Milliseconds since some start; wraps around at 2^32.
    [[nodiscard]] virtual std::uint32_t GetTickCount() = 0;

    [[nodiscard]] virtual LocalTime now() = 0;

    // Queues a handler for delivery by the program's thread. The only member that
    // other threads may call. A handler must not outlive what it refers to.
    virtual void post(std::function<void()> handler) = 0;
};

}  // namespace kalvo
