#include "core/reception/line_tap.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// What comes closer together than this stands in one row.
constexpr std::int64_t kTogether = 20;  // milliseconds

}  // namespace

LineTap::LineTap(SerialPort& line, Clock clock) : line_(line), clock_(std::move(clock)) {
    line_.onInput([this](std::string_view bytes) {
        keep(LineEventKind::kReceived, bytes);
        if (input_) input_(bytes);
    });
    line_.onComm([this] {
        noteCommEvent();
        if (comm_) comm_();
    });
    line_.onClosed([this](std::size_t unread) {
        if (unread > 0)
            note(std::to_string(unread) + std::string(" octets écartés sans être lus"_ansi));
        if (closed_) closed_(unread);
    });
    line_.onLineChange([this](bool lost) {
        note(lost ? "Liaison perdue"_ansi : "Liaison revenue"_ansi);
        if (lineChange_) lineChange_(lost);
    });
}

LineTap::Traffic LineTap::since(std::uint64_t number) {
    const std::lock_guard lock(mutex_);
    seen_ = true;
    Traffic traffic;
    traffic.next = forgotten_ + events_.size();
    const std::uint64_t first = std::clamp(number, forgotten_, traffic.next);
    traffic.events.assign(events_.begin() + static_cast<std::ptrdiff_t>(first - forgotten_),
                          events_.end());
    return traffic;
}

void LineTap::keep(LineEventKind kind, std::string_view bytes) {
    const std::int64_t now = clock_();
    const std::lock_guard lock(mutex_);
    while (!bytes.empty()) {
        const bool grows = !seen_ && events_.back().kind == kind &&
                           events_.back().bytes.size() < kRow &&
                           now - events_.back().time <= kTogether;
        if (!grows) events_.push_back({now, kind, {}});
        std::string& row = events_.back().bytes;
        const std::size_t count = std::min(bytes.size(), kRow - row.size());
        row.append(bytes.substr(0, count));
        bytes.remove_prefix(count);
        seen_ = false;
    }
    while (events_.size() > kMost) {
        events_.pop_front();
        ++forgotten_;
    }
}

void LineTap::note(std::string_view text) {
    const std::int64_t now = clock_();
    const std::lock_guard lock(mutex_);
    events_.push_back({now, LineEventKind::kNote, std::string(text)});
    seen_ = true;
    if (events_.size() <= kMost) return;
    events_.pop_front();
    ++forgotten_;
}

void LineTap::noteCommEvent() {
    switch (line_.CommEvent()) {
        case comm_event::kBreak: return note("Signal d'arrêt"_ansi);
        case comm_event::kReceiveOverflow: return note("Débordement : des octets sont perdus"_ansi);
        case comm_event::kCts: return note("CTS a changé"_ansi);
        default: break;
    }
}

void LineTap::setSettings(std::string_view settings) {
    line_.setSettings(settings);
    settings_ = settings;
}

void LineTap::Output(std::string_view bytes) {
    line_.Output(bytes);
    keep(LineEventKind::kSent, bytes);
}

void LineTap::setPortOpen(bool open) {
    if (open) return opening([this] { line_.setPortOpen(true); });
    const bool was = line_.PortOpen();
    line_.setPortOpen(false);
    if (was) note("Port fermé"_ansi);
}

void LineTap::reopen() {
    opening([this] { line_.reopen(); });
}

void LineTap::opening(const std::function<void()>& open) {
    const std::string port = "Port COM " + std::to_string(line_.CommPort());
    try {
        open();
    } catch (const RuntimeError& error) {
        note(port + " : " + error.description());
        throw;
    }
    note(port + " ouvert, " + settings_);
}

}  // namespace kalvo
