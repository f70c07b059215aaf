// Time as every event pump tells it.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>

namespace kalvo {

// Local date and time of day.
struct LocalTime {
    int year = 1970;
    int month = 1;  // 1..12
    int day = 1;    // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

[[nodiscard]] inline LocalTime localTimeOf(std::time_t time) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &time);
#else
    localtime_r(&time, &local);
#endif
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

// The time of the system clock, now.
[[nodiscard]] inline LocalTime localNow() { return localTimeOf(std::time(nullptr)); }

// The same as milliseconds since the midnight in which 1970 began here.
[[nodiscard]] inline std::int64_t localMilliseconds() {
    using namespace std::chrono;
    const auto now = time_point_cast<milliseconds>(system_clock::now());
    const LocalTime local = localTimeOf(system_clock::to_time_t(now));
    const sys_days day = year(local.year) / local.month / local.day;
    const auto part = now - floor<seconds>(now);
    return (day.time_since_epoch() + hours(local.hour) + minutes(local.minute) +
            seconds(local.second) + part)
        .count();
}

// Milliseconds since some start; wraps around at 2^32.
[[nodiscard]] inline std::uint32_t steadyTicks() {
    using std::chrono::steady_clock;
    const auto sinceStart = steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

}  // namespace kalvo
