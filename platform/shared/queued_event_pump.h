// What every event pump is made of, whatever delivers its events.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/clock.h"
#include "platform/event_pump.h"
#include "text/runtime_error.h"

namespace kalvo {

// Posted handlers wait in a queue for the program's thread.
class QueuedEventPump : public EventPump {
public:
    // `onError` is told of run-time errors that a delivered handler did not handle.
    explicit QueuedEventPump(std::function<void(const RuntimeError&)> onError)
        : onError_(std::move(onError)) {}

    // Asks the program to end. Other threads may call it.
    void requestEnd() {
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake();
    }

    // Runs a handler as an event of the program: neither a run-time error nor ProgramEnd
    // gets out of it.
    void deliver(const std::function<void()>& handler) {
        try {
            handler();
        } catch (const RuntimeError& error) {
            onError_(error);
        } catch (const ProgramEnd&) {
            // Asked to end: the event loop is about to return.
        }
    }

    [[nodiscard]] bool ending() override { return ending_; }
    void Sleep(int milliseconds) override {
        idleCalls_ = 0;
        rest(milliseconds);
    }
    std::uint32_t GetTickCount() override { return steadyTicks(); }
    LocalTime now() override { return localNow(); }
    void post(std::function<void()> handler) override {
        {
            const std::lock_guard lock(mutex_);
            queue_.push_back(std::move(handler));
        }
        wake();
    }

protected:
    // Makes the program's thread look at the queue, and at ending(), soon.
    virtual void wake() = 0;
    // Stops the program's thread for a while.
    virtual void rest(int milliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

    // Delivers the handlers that wait by now: one that posts another does not keep the
    // caller here for ever. Nothing any more once the program ends. Whether there was any.
    bool deliverWaiting() {
        std::size_t count = 0;
        {
            const std::lock_guard lock(mutex_);
            count = queue_.size();
        }
        const bool any = count > 0;
        for (; count > 0 && !ending_; --count)
            if (const auto handler = take()) deliver(handler);
        return any;
    }

    // Whether a caller of DoEvents that does nothing else should rest for a millisecond:
    // after so many calls in a row that found nothing.
    [[nodiscard]] bool restIsDue(bool delivered) {
        constexpr int kIdleCallsBeforeRest = 100;
        idleCalls_ = delivered ? 0 : idleCalls_ + 1;
        return idleCalls_ > kIdleCallsBeforeRest;
    }

    // Guard the queue, for those who wait for it.
    std::mutex mutex_;
    std::deque<std::function<void()>> queue_;

private:
    std::function<void()> take() {
        const std::lock_guard lock(mutex_);
        if (queue_.empty()) return nullptr;
        auto handler = std::move(queue_.front());
        queue_.pop_front();
        return handler;
    }

    std::function<void(const RuntimeError&)> onError_;
    std::atomic<bool> ending_ = false;
    int idleCalls_ = 0;  // of DoEvents in a row that found nothing
};

}  // namespace kalvo
