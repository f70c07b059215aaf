#include "tools/capture_player.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kalvo {

namespace {

constexpr std::int64_t kAnswerTime = 10'000;  // milliseconds

void await(TerminalLine& line, std::size_t count) {
    const std::int64_t deadline = line.now() + kAnswerTime;
    for (std::size_t got = 0; got < count && line.now() < deadline;)
        got += line.read(deadline - line.now()).size();
}

}  // namespace

void playCapture(TerminalLine& line, std::span<const LineEvent> events) {
    if (events.empty()) return;
    std::int64_t before = events.front().time;
    for (const LineEvent& event : events) {
        if (event.kind == LineEventKind::kSent) {
            await(line, event.bytes.size());
        } else {
            line.pause(std::max<std::int64_t>(event.time - before, 0));
            if (event.kind == LineEventKind::kReceived) line.write(event.bytes);
        }
        before = event.time;
    }
}

}  // namespace kalvo
