#include "platform/wayland/target_backlog.h"

#include <algorithm>
#include <thread>

#include "platform/wayland/socket_queues.h"

namespace kalvo {

namespace {

using std::chrono::milliseconds;

// What these keys make fits in an application's connection several times, with what may
// wait there already (about 200 kB in all).
constexpr std::uint64_t kKeysBetweenQuestions = 128;
constexpr std::uint32_t kMostWaiting = 32 * 1024;  // bytes as the kernel counts them
constexpr milliseconds kTimeBetweenQuestions{5};
constexpr std::uint64_t kSlowPace = 500;  // keys in a second

}  // namespace

TargetBacklog::TargetBacklog(WaylandConnection& connection, const KeySender& keys)
    : connection_(connection), keys_(keys), socket_(connection.socketName()) {}

bool TargetBacklog::await(milliseconds limit) {
    if (!behind_ && keys_.presses() - asked_ < kKeysBetweenQuestions) return true;
    connection_.sync();
    if (tooMuch()) {
        std::this_thread::sleep_for(std::min(limit, kTimeBetweenQuestions));
        behind_ = true;
        return false;
    }
    behind_ = false;
    asked_ = keys_.presses();
    lastAsked_ = Clock::now();
    return true;
}

// What waited before typing began, and has not grown, waits for somebody else.
bool TargetBacklog::tooMuch() {
    const auto now = socketQueues(socket_);
    if (now.empty()) {
        const milliseconds due(1000 * (keys_.presses() - asked_) / kSlowPace);
        return Clock::now() - lastAsked_ < due;
    }
    if (before_.empty()) before_ = now;
    return std::any_of(now.begin(), now.end(), [&](const auto& queue) {
        const auto then = before_.find(queue.first);
        return queue.second > kMostWaiting &&
               (then == before_.end() || queue.second > then->second);
    });
}

}  // namespace kalvo
