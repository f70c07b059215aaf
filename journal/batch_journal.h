// The journal of batches: every batch is on disk before anything acts on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/event_pump.h"
#include "platform/journal_file.h"

namespace kalvo {

// Keeps batches and what becomes of them. A journal that cannot be written never keeps a
// batch from being typed: the user is told once, until it works again, and the batch has
// no number, for which every other call does nothing.
class BatchJournal {
public:
    // The number of a batch that is not in the journal.
    static constexpr std::int64_t kNone = 0;

    // Without a file nothing is kept and nothing is said; `openLate` is asked for one before
    // anything is written, null for none yet. `warn` is told, in French, what the user should
    // know of the journal itself.
    BatchJournal(JournalFile* file, EventPump& events, std::function<void(std::string_view)> warn,
                 std::function<JournalFile*()> openLate = {});

    // Tries once more to write what could not be written.
    ~BatchJournal();
    BatchJournal(const BatchJournal&) = delete;
    BatchJournal& operator=(const BatchJournal&) = delete;

    // Whether batches are kept.
    [[nodiscard]] bool keeps() const { return file_ != nullptr; }
    // Another number whenever something was written.
    [[nodiscard]] std::uint64_t changes() const { return changes_; }

    // A pushed batch, before it is processed. `behindEnd` is what arrived behind its end
    // mark, kept as a discarded batch of its own; `taken` is how many bytes of the line
    // all of it is.
    std::int64_t receive(const BatchOrigin& origin, std::string_view bytes,
                         std::string_view behindEnd, std::size_t taken);
    // A batch that grows record by record; `records` is all of it so far, of which the file
    // gets what it has not yet.
    std::int64_t receiveRecords(std::int64_t batch, const BatchOrigin& origin,
                                std::string_view records);
    // Bytes that a rule drops, and which one; `taken` as above.
    void discard(const BatchOrigin& origin, std::string_view bytes, std::string_view rule,
                 std::size_t taken = 0);
    // The latest bytes of the flow, which nobody will read, dropped by `rule`.
    void discardUnread(const BatchOrigin& origin, std::size_t bytes, std::string_view rule);
    // The next bytes of the flow are nothing that anybody could want again.
    void forgetFlow(std::size_t taken);
    // Adds to the flow what the line brings; from the line's thread.
    void keepFlow(std::string_view bytes) noexcept;

    // How far typing has come; written a few times a second at most.
    void typing(std::int64_t batch, std::int32_t passes, std::int32_t passesDone);
    // `note` is what the user should look at all the same; may be empty.
    void typed(std::int64_t batch, std::int32_t passes, std::string_view note = {});
    // Not yet typed, and why.
    void waiting(std::int64_t batch, std::string_view reason);
    void written(std::int64_t batch, std::int32_t passes);
    void interrupted(std::int64_t batch, std::int32_t passes, std::int32_t passesDone,
                     std::string_view reason);
    void failed(std::int64_t batch, std::string_view reason);

    // At the start of the program: what a run before left in the flow becomes a batch, what
    // it left being typed is interrupted. How many batches are waiting for the user.
    std::size_t recover();
    // Forgets what is older than `days` or goes beyond `megabytes`; below 1 neither counts.
    std::size_t purge(std::int32_t days, std::int32_t megabytes);

private:
    struct Progress {
        BatchState state;
        std::int32_t passes;
        std::int32_t passesDone;
        std::string reason;
    };

    template <typename Step>
    void attempt(Step&& step);
    void rescueEarlierFlow();
    void writeStates();
    void update(std::int64_t batch, BatchState state, std::int32_t passes, std::int32_t passesDone,
                std::string_view reason);
    [[nodiscard]] NewBatch newBatch(const BatchOrigin& origin, BatchState state,
                                    std::string_view bytes, std::string_view reason);

    JournalFile* file_;
    EventPump& events_;
    std::function<void(std::string_view)> warn_;
    std::function<JournalFile*()> openLate_;
    bool warned_ = false;  // the last attempt failed
    std::uint64_t changes_ = 0;
    std::size_t recordsKept_ = 0;                 // bytes that the file has of the batch that grows
    std::map<std::int64_t, Progress> unwritten_;  // states that the file has not yet
    std::int64_t progressOf_ = kNone;
    std::uint32_t progressAt_ = 0;
};

// What listings and the file call a state.
[[nodiscard]] std::string_view nameOf(BatchState state);
// Whether the user may still want something done with it.
[[nodiscard]] bool unfinished(BatchState state);

// The records of a batch: lines that CR LF ends or, where there are none, CR.
[[nodiscard]] std::int32_t countRecords(std::string_view bytes);

// "2024-03-05 14:07:09", some days before or after a time.
[[nodiscard]] std::string timeText(const LocalTime& time, int daysLater = 0);

}  // namespace kalvo
