// The event loop of the desktop program: the toolkit's own, on one thread.
#pragma once

#include <QObject>
#include <atomic>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/event_pump.h"
#include "text/runtime_error.h"

namespace kalvo {

class QtEventPump : public QObject, public EventPump {
public:
    // `onError` is told of run-time errors that a delivered handler did not handle.
    explicit QtEventPump(std::function<void(const RuntimeError&)> onError)
        : onError_(std::move(onError)) {}

    // Delivers events until the program is asked to end.
    void run();

    // Asks the program to end. Other threads may call it.
    void requestEnd();

    // Runs a handler as an event of the program. Whatever a window does goes through
    // here: nothing may be thrown into the toolkit, neither a run-time error nor
    // ProgramEnd.
    void deliver(const std::function<void()>& handler);

    // Lets the toolkit draw what has changed. Nothing of the program's own is delivered,
    // nor any input of the user: a caller may be in the middle of something.
    void draw();

    void DoEvents() override;
    void waitForEvents(int milliseconds) override;
    [[nodiscard]] bool ending() override { return ending_; }
    void Sleep(int milliseconds) override;
    std::uint32_t GetTickCount() override;
    LocalTime now() override;
    void post(std::function<void()> handler) override;

private:
    void deliverWaiting();

    std::function<void(const RuntimeError&)> onError_;
    std::atomic<bool> ending_ = false;
    std::mutex mutex_;
    std::deque<std::function<void()>> waiting_;
    bool drawing_ = false;
    // Calls of DoEvents in a row that found nothing.
    int idleCalls_ = 0;
};

}  // namespace kalvo
