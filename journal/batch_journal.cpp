#include "journal/batch_journal.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <limits>
#include <utility>

#include "text/ansi_text.h"
#include "text/field_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Milliseconds. Whoever holds the journal makes each try wait, and the keys with it.
constexpr std::uint32_t kProgressInterval = 250;
constexpr std::uint32_t kRetryInterval = 20'000;
constexpr std::uint64_t kMegabyte = std::uint64_t{1024} * 1024;

}  // namespace

BatchJournal::BatchJournal(JournalFile* file, EventPump& events,
                           std::function<void(std::string_view)> warn,
                           std::function<JournalFile*()> openLate)
    : file_(file), events_(events), warn_(std::move(warn)), openLate_(std::move(openLate)) {}

BatchJournal::~BatchJournal() {
    if (!unwritten_.empty()) attempt([] {});
}

// Once in a row of failures: a full disk is one piece of news.
template <typename Step>
void BatchJournal::attempt(Step&& step) {
    if (file_ == nullptr && openLate_) file_ = openLate_();
    if (file_ == nullptr) return;
    try {
        step();
        writeStates();
        warned_ = false;
        ++changes_;
    } catch (const RuntimeError& error) {
        if (!std::exchange(warned_, true))
            warn_(std::string("Le journal des lots ne peut pas être écrit ; "
                              "la saisie continue sans lui. "_ansi) +
                  error.description());
    }
}

std::int64_t BatchJournal::receive(const BatchOrigin& origin, std::string_view bytes,
                                   std::string_view behindEnd, std::size_t taken) {
    std::int64_t id = kNone;
    attempt([&] {
        rescueEarlierFlow();
        id = file_->append(newBatch(origin, BatchState::kReceived, bytes, {}), bytes, taken);
    });
    if (id == kNone) forgetFlow(taken);
    if (!behindEnd.empty()) discard(origin, behindEnd, "reçu derrière la marque de fin"_ansi);
    return id;
}

std::int64_t BatchJournal::receiveRecords(std::int64_t batch, const BatchOrigin& origin,
                                          std::string_view records) {
    if (batch != kNone && recordsKept_ == records.size()) return batch;
    attempt([&] {
        if (batch == kNone) {
            batch = file_->append(newBatch(origin, BatchState::kReceived, records, {}), records, 0);
        } else {
            const std::string_view missing = records.substr(recordsKept_);
            file_->extend(batch, missing, countRecords(missing));
        }
        recordsKept_ = records.size();
    });
    return batch;
}

void BatchJournal::discard(const BatchOrigin& origin, std::string_view bytes, std::string_view rule,
                           std::size_t taken) {
    if (bytes.empty()) return;
    std::int64_t id = kNone;
    attempt([&] {
        if (taken > 0) rescueEarlierFlow();
        id = file_->append(newBatch(origin, BatchState::kDiscarded, bytes, rule), bytes, taken);
    });
    if (id == kNone) forgetFlow(taken);
}

void BatchJournal::discardUnread(const BatchOrigin& origin, std::size_t bytes,
                                 std::string_view rule) {
    attempt([&] {
        discard(origin, file_->latestFlow(bytes), rule);
        file_->dropLatestFlow(bytes);
    });
}

// Before anything of this run leaves the flow: it stands behind what the run before left.
void BatchJournal::rescueEarlierFlow() {
    const std::string bytes = file_->earlierFlow();
    if (bytes.empty()) return;
    file_->append(newBatch({}, BatchState::kReceived, bytes, "réception inachevée"_ansi), bytes,
                  bytes.size());
}

void BatchJournal::forgetFlow(std::size_t taken) {
    if (taken == 0) return;
    attempt([&] {
        rescueEarlierFlow();
        file_->forgetFlow(taken);
    });
}

void BatchJournal::keepFlow(std::string_view bytes) noexcept {
    if (file_ != nullptr) file_->keepFlow(bytes);
}

void BatchJournal::typing(std::int64_t batch, std::int32_t passes, std::int32_t passesDone) {
    const std::uint32_t now = events_.GetTickCount();
    const std::uint32_t interval = warned_ ? kRetryInterval : kProgressInterval;
    if (batch == progressOf_ && now - progressAt_ < interval) return;
    progressOf_ = batch;
    progressAt_ = now;
    update(batch, BatchState::kTyping, passes, passesDone, {});
}

void BatchJournal::typed(std::int64_t batch, std::int32_t passes, std::string_view note) {
    update(batch, BatchState::kTyped, passes, passes, note);
}

void BatchJournal::waiting(std::int64_t batch, std::string_view reason) {
    update(batch, BatchState::kReceived, 0, 0, reason);
}

void BatchJournal::written(std::int64_t batch, std::int32_t passes) {
    update(batch, BatchState::kWritten, passes, passes, {});
}

void BatchJournal::interrupted(std::int64_t batch, std::int32_t passes, std::int32_t passesDone,
                               std::string_view reason) {
    update(batch, BatchState::kInterrupted, passes, passesDone, reason);
}

void BatchJournal::failed(std::int64_t batch, std::string_view reason) {
    update(batch, BatchState::kFailed, 0, 0, reason);
}

void BatchJournal::update(std::int64_t batch, BatchState state, std::int32_t passes,
                          std::int32_t passesDone, std::string_view reason) {
    if (batch == kNone) return;
    unwritten_[batch] = {state, passes, passesDone, std::string(reason)};
    attempt([] {});
}

// The states of a time without room on the disk come late, but they come.
void BatchJournal::writeStates() {
    while (!unwritten_.empty()) {
        const auto& [batch, to] = *unwritten_.begin();
        file_->update(batch, to.state, to.passes, to.passesDone, to.reason);
        unwritten_.erase(unwritten_.begin());
    }
}

std::size_t BatchJournal::recover() {
    std::size_t waiting = 0;
    attempt([&] {
        rescueEarlierFlow();
        for (const JournalEntry& entry : file_->list(0)) {
            if (entry.state == BatchState::kTyping)
                file_->update(entry.id, BatchState::kInterrupted, entry.passes, entry.passesDone,
                              "le programme a été arrêté"_ansi);
            if (unfinished(entry.state)) ++waiting;
        }
    });
    return waiting;
}

std::size_t BatchJournal::purge(std::int32_t days, std::int32_t megabytes) {
    std::size_t forgotten = 0;
    const std::string before = days < 1 ? std::string() : timeText(events_.now(), -days);
    const std::uint64_t most = megabytes < 1 ? std::numeric_limits<std::int64_t>::max()
                                             : static_cast<std::uint64_t>(megabytes) * kMegabyte;
    attempt([&] { forgotten = file_->purge(before, most); });
    return forgotten;
}

NewBatch BatchJournal::newBatch(const BatchOrigin& origin, BatchState state, std::string_view bytes,
                                std::string_view reason) {
    return {timeText(events_.now()), origin, state, countRecords(bytes), std::string(reason)};
}

std::string_view nameOf(BatchState state) {
    return kBatchStates.at(static_cast<std::size_t>(state));
}

bool unfinished(BatchState state) {
    return state == BatchState::kReceived || state == BatchState::kTyping ||
           state == BatchState::kInterrupted || state == BatchState::kFailed;
}

std::int32_t countRecords(std::string_view bytes) {
    const std::size_t lines = CountSeparators(bytes, "\r\n");
    return static_cast<std::int32_t>(lines > 0 ? lines : CountSeparators(bytes, "\r"));
}

std::string timeText(const LocalTime& time, int daysLater) {
    using namespace std::chrono;
    const sys_days day = year_month_day{year(time.year), month(static_cast<unsigned>(time.month)),
                                        std::chrono::day(static_cast<unsigned>(time.day))};
    const year_month_day date = day + days(daysLater);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d", int{date.year()},
                  unsigned{date.month()}, unsigned{date.day()}, time.hour, time.minute,
                  time.second);
    return text.data();
}

}  // namespace kalvo
