// Batches that the portables "HT630" and "PT630" send on their own.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/run_time_state.h"
#include "journal/batch_journal.h"
#include "platform/file_system.h"
#include "platform/platform.h"

namespace kalvo {

// Ends an HT630 batch; everything before it is the batch.
inline constexpr std::string_view kEndOfBatch = "FINTRANSKALVO";
// A PT630 text that ends with this character announces the terminal.
inline constexpr char kConnected = '\xFF';
// An empty PT630 batch.
inline constexpr std::string_view kEmptyBatch = "<DEL>\r\n";

// Collects a batch with the waits of its terminal, puts it into the journal and hands it
// to `dispatch` in state.ReceivedData. What a rule drops goes into the journal, too.
class BatchReception {
public:
    BatchReception(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                   std::function<void()> dispatch)
        : platform_(platform), state_(state), journal_(journal), dispatch_(std::move(dispatch)) {}

    // Polls every 300 ms until the end of the batch has come. Fewer than four
    // characters at the first poll are strays on the line, not a batch: they are
    // dropped.
    void collectHt630();

    // Collects until the line has been silent for 500 ms. What arrives is also written to
    // a temporary file in the application folder, which is there as long as the batch is
    // being worked on; the batch does not depend on it.
    void collectPt630();

    // After a failure while collecting: what had been read goes into the journal as dropped.
    void abandon();

private:
    void receivePt630(TextStream* copy);
    void actOnPt630Event();
    void dispatchNew(std::string_view behindEnd, std::size_t taken);

    Platform platform_;
    RunTimeState& state_;
    BatchJournal& journal_;
    std::function<void()> dispatch_;
    std::string read_;  // of the batch that is being collected
};

}  // namespace kalvo
