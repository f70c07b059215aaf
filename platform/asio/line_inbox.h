// Where the line's thread leaves bytes and events for the program's thread.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

#include "platform/asio/receive_queue.h"
#include "platform/event_pump.h"

namespace kalvo {

// Keeps received bytes, and turns what happens on the line into handlers delivered
// by the pump. One event at a time is on its way; what happens meanwhile joins it.
// A joined event has the kind that matters most: an error, then reception, then a
// change of CTS, then a finished send. A receive event whose bytes were taken before
// its delivery is dropped. Nothing is delivered once the inbox is gone.
class LineInbox : public std::enable_shared_from_this<LineInbox> {
public:
    explicit LineInbox(EventPump& pump) : pump_(pump) {}

    // Called by the line's thread.
    void received(std::string_view bytes);
    void sent(std::size_t left);  // `left` bytes still wait for sending
    void happened(int event);     // one of comm_event
    void lineChanged(bool lost);

    // Called by the program's thread.
    [[nodiscard]] std::string take();
    [[nodiscard]] std::size_t waiting() const;
    [[nodiscard]] int latestEvent() const { return latestEvent_; }
    void setReceiveThreshold(int characters);
    void setSendThreshold(int characters);
    void setInputLength(int characters);
    void setEventHandler(std::function<void()> handler) { onEvent_ = std::move(handler); }
    void setLineHandler(std::function<void(bool)> handler) { onLine_ = std::move(handler); }
    // Told of what comes in before it waits here; set while no line is open.
    void setListener(std::function<void(std::string_view)> listener) {
        listener_ = std::move(listener);
    }
    // Drops the bytes that wait and the events that are on their way; how many bytes.
    std::size_t clear();

private:
    void raise(int event);
    void deliverEvent();
    void deliverLineChange(bool lost, unsigned epoch);
    [[nodiscard]] int takePendingEvent();

    EventPump& pump_;

    std::function<void(std::string_view)> listener_;  // of the line's thread while open

    mutable std::mutex mutex_;
    ReceiveQueue queue_;
    std::set<int> pending_;
    bool posted_ = false;
    unsigned epoch_ = 0;  // counts clear(), so that late line changes are recognised
    std::size_t receiveThreshold_ = 0;
    std::size_t sendThreshold_ = 0;
    std::size_t inputLength_ = 0;

    // Of the program's thread only.
    int latestEvent_ = 0;
    std::function<void()> onEvent_;
    std::function<void(bool)> onLine_;
};

}  // namespace kalvo
