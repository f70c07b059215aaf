// Batches that the portables "HT630" and "PT630" send on their own.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/run_time_state.h"
#include "platform/platform.h"

namespace kalvo {

// Ends an HT630 batch; everything before it is the batch.
inline constexpr std::string_view kEndOfBatch = "FINTRANSKALVO";
// A PT630 text that ends with this character announces the terminal.
inline constexpr char kConnected = '\xFF';
// An empty PT630 batch.
inline constexpr std::string_view kEmptyBatch = "<DEL>\r\n";

// Collects a batch with the waits of its terminal and hands it to `dispatch` in
// state.ReceivedData.
class BatchReception {
public:
    BatchReception(const Platform& platform, RunTimeState& state, std::function<void()> dispatch)
        : platform_(platform), state_(state), dispatch_(std::move(dispatch)) {}

    // Polls every 300 ms until the end of the batch has come. Fewer than four
    // characters at the first poll are strays on the line, not a batch: they are
    // dropped.
    void collectHt630();

    // Writes what arrives to a temporary file in the application folder until the
    // line has been silent for 500 ms, then takes the file's content as the batch.
    void collectPt630();

private:
    std::string storePt630();
    void removeFile(const std::string& file);
    void actOnPt630Event();

    Platform platform_;
    RunTimeState& state_;
    std::function<void()> dispatch_;
    std::string temporaryFile_;
};

}  // namespace kalvo
