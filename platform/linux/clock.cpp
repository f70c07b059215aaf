#include "platform/linux/clock.h"

#include <chrono>
#include <ctime>

namespace kalvo {

LocalTime localNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::tzset();  // localtime_r alone may not look at the time zone
    ::localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

std::uint32_t tickCount() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

}  // namespace kalvo
