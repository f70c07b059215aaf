// What a run without windows tells of itself, to whoever asks and to the service manager.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

#include "app/running_site.h"
#include "platform/event_pump.h"
#include "platform/log.h"
#include "platform/serial_port.h"

namespace kalvo {

class ListenStatus {
public:
    // What is given here outlives it.
    ListenStatus(RunningSite& site, EventPump& events) : site_(site), events_(events) {}

    // An entry of the log, from any thread: what went wrong last is part of the status.
    void logged(LogLevel level, std::string_view text) noexcept;

    void scenario(std::string_view name);
    void port(const SerialPort& port, bool lost);
    void batchDone();

private:
    void tell();

    std::mutex mutex_;
    RunningSite& site_;
    EventPump& events_;
    std::string port_;
    std::string scenario_;
    std::string lastError_ = "aucune";
    std::size_t batches_ = 0;
};

}  // namespace kalvo
