// The durable store behind the journal of batches.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// What has become of a batch. In the file and in listings the states have French names.
enum class BatchState {
    kReceived,     // recu: on disk, nothing done with it yet
    kTyping,       // saisie: being typed; `passesDone` says how far
    kTyped,        // saisi: typed whole
    kWritten,      // ecrit: put into the file of its scenario
    kInterrupted,  // interrompu: typing was broken off behind `passesDone`
    kFailed,       // echec: nothing came of it; `reason` says why
    kDiscarded,    // ecarte: bytes that a rule of a dialogue drops
};

// The states by their names, in the order of BatchState.
inline constexpr std::array<std::string_view, 7> kBatchStates = {
    "recu", "saisie", "saisi", "ecrit", "interrompu", "echec", "ecarte"};

// Where a batch came from. Texts are code page 1252.
struct BatchOrigin {
    int port = 0;  // 0: not known any more
    std::string terminal;
    std::string scenario;
};

// A batch to be put away.
struct NewBatch {
    std::string received;  // local time, "2024-03-05 14:07:09"
    BatchOrigin origin;
    BatchState state = BatchState::kReceived;
    std::int32_t records = 0;
    std::string reason;  // why it is not done; empty otherwise
};

// A batch without its bytes.
struct JournalEntry : NewBatch {
    std::int64_t id = 0;          // from 1, in the order of arrival
    std::int32_t passes = 0;      // of the scenario; 0 until it has been processed
    std::int32_t passesDone = 0;  // of them typed
    std::uint64_t size = 0;       // bytes
};

// A store of batches, and beside it the flow: what the line has brought and no batch
// holds yet. Every call is done when it returns. RuntimeErrors of the data engine (3260
// locked, 3043 disk, 61 disk full).
class JournalFile {
public:
    virtual ~JournalFile() = default;

    // Keeps a batch; returns its id once it is on the disk. The first `flowTaken` bytes of
    // the flow belong to it and leave the flow with the same commit.
    virtual std::int64_t append(const NewBatch& batch, std::string_view bytes,
                                std::uint64_t flowTaken) = 0;
    // Adds records to a batch, as durably.
    virtual void extend(std::int64_t id, std::string_view bytes, std::int32_t records) = 0;

    // Changes the state. Survives the end of the program; a power cut may bring the state
    // before back.
    virtual void update(std::int64_t id, BatchState state, std::int32_t passes,
                        std::int32_t passesDone, std::string_view reason) = 0;

    // Adds what the line brings to the flow: safe from the end of the program, not from
    // that of the machine. Other threads may call it; a failure is reported by the next
    // append.
    virtual void keepFlow(std::string_view bytes) noexcept = 0;
    // The next bytes leave the flow and are in no batch; they have left it when this fails.
    virtual void forgetFlow(std::uint64_t taken) = 0;
    // What a run before has left at the front of the flow.
    [[nodiscard]] virtual std::string earlierFlow() = 0;
    // The latest bytes of the flow, and their leaving it.
    [[nodiscard]] virtual std::string latestFlow(std::uint64_t bytes) = 0;
    virtual void dropLatestFlow(std::uint64_t bytes) = 0;

    // The latest batches first, `most` at most (0: all).
    [[nodiscard]] virtual std::vector<JournalEntry> list(std::size_t most) = 0;
    // How many are neither done nor discarded.
    [[nodiscard]] virtual std::size_t countUnfinished() = 0;
    [[nodiscard]] virtual std::optional<JournalEntry> find(std::int64_t id) = 0;
    // The bytes of a batch, exactly; empty when there is none of that id.
    [[nodiscard]] virtual std::string bytes(std::int64_t id) = 0;
    // The batches that hold a text, whatever its case and accents; of a polled batch, within
    // one record.
    [[nodiscard]] virtual std::vector<std::int64_t> containing(std::string_view text) = 0;

    // Forgets batches received before a local time, then the oldest ones that are done
    // until all bytes are within `mostBytes`. How many were forgotten.
    virtual std::size_t purge(std::string_view before, std::uint64_t mostBytes) = 0;
};

}  // namespace kalvo
