#include "platform/asio/line_inbox.h"

#include <array>

#include "platform/serial_port.h"

namespace kalvo {

namespace {

constexpr std::array kByWeight = {comm_event::kBreak, comm_event::kReceiveOverflow,
                                  comm_event::kReceive, comm_event::kCts, comm_event::kSend};

std::size_t countOf(int characters) {
    return characters > 0 ? static_cast<std::size_t>(characters) : 0;
}

}  // namespace

void LineInbox::received(std::string_view bytes) {
    if (listener_) listener_(bytes);
    const std::lock_guard lock(mutex_);
    queue_.append(bytes);
    if (receiveThreshold_ > 0 && queue_.size() >= receiveThreshold_) raise(comm_event::kReceive);
}

void LineInbox::sent(std::size_t left) {
    const std::lock_guard lock(mutex_);
    if (left < sendThreshold_) raise(comm_event::kSend);
}

void LineInbox::happened(int event) {
    const std::lock_guard lock(mutex_);
    raise(event);
}

void LineInbox::raise(int event) {
    pending_.insert(event);
    if (posted_) return;
    posted_ = true;
    pump_.post([self = weak_from_this()] {
        if (const auto inbox = self.lock()) inbox->deliverEvent();
    });
}

void LineInbox::deliverEvent() {
    const int event = takePendingEvent();
    if (event == 0) return;
    latestEvent_ = event;
    // A copy: the handler may set another one, or end the port.
    if (const auto handler = onEvent_) handler();
}

int LineInbox::takePendingEvent() {
    const std::lock_guard lock(mutex_);
    posted_ = false;
    if (queue_.size() < receiveThreshold_) pending_.erase(comm_event::kReceive);
    const auto pending = std::exchange(pending_, {});
    for (const int event : kByWeight)
        if (pending.count(event) != 0) return event;
    return 0;
}

void LineInbox::lineChanged(bool lost) {
    const std::lock_guard lock(mutex_);
    pump_.post([self = weak_from_this(), lost, epoch = epoch_] {
        if (const auto inbox = self.lock()) inbox->deliverLineChange(lost, epoch);
    });
}

void LineInbox::deliverLineChange(bool lost, unsigned epoch) {
    {
        const std::lock_guard lock(mutex_);
        if (epoch != epoch_) return;
    }
    if (lost) latestEvent_ = comm_event::kLineLost;
    if (const auto handler = onLine_) handler(lost);
}

std::string LineInbox::take() {
    const std::lock_guard lock(mutex_);
    return queue_.take(inputLength_);
}

std::size_t LineInbox::waiting() const {
    const std::lock_guard lock(mutex_);
    return queue_.size();
}

void LineInbox::setReceiveThreshold(int characters) {
    const std::lock_guard lock(mutex_);
    receiveThreshold_ = countOf(characters);
}

void LineInbox::setSendThreshold(int characters) {
    const std::lock_guard lock(mutex_);
    sendThreshold_ = countOf(characters);
}

void LineInbox::setInputLength(int characters) {
    const std::lock_guard lock(mutex_);
    inputLength_ = countOf(characters);
}

std::size_t LineInbox::clear() {
    const std::lock_guard lock(mutex_);
    const std::size_t unread = queue_.size();
    queue_.clear();
    pending_.clear();
    ++epoch_;
    return unread;
}

}  // namespace kalvo
