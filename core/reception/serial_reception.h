// The one serial port of the system: its set-up from PortSerie.ini, its receive
// event, and the transfer from a polled scanner.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>

#include "core/reception/batch_reception.h"
#include "core/reception/pull_dialogue.h"
#include "core/run_time_state.h"
#include "journal/batch_journal.h"
#include "platform/platform.h"
#include "platform/serial_port.h"

namespace kalvo {

// Whether terminals of that type send batches on their own.
[[nodiscard]] bool pushesBatches(std::string_view terminalType);

// Whether terminals of that type are asked for their records.
[[nodiscard]] bool isPolled(std::string_view terminalType);

// Says that the stored flow control is none there is, if so.
void sayUnknownFlow(const Platform& platform, std::string_view applicationFolder);

// What the user is told of a line that was lost or is back: port, and the device missed.
[[nodiscard]] std::string lineChangeText(const SerialPort& port, bool lost);

class SerialReception {
public:
    // `dispatch` takes state.ReceivedData further (TraiteEmul).
    SerialReception(const Platform& platform, RunTimeState& state, BatchJournal& journal,
                    std::function<void()> dispatch);
    SerialReception(const SerialReception&) = delete;
    SerialReception& operator=(const SerialReception&) = delete;

    // Sets the port up from PortSerie.ini, state.TerminalType included, and leaves
    // it closed. RuntimeError 8002 for a port number out of range, 380 for line
    // settings the port refuses.
    void configurePort();

    // Opens a closed port and beeps. RuntimeErrors of the port.
    void openPort();

    // The receive event. Terminals that are not of the push family are not read
    // here; nothing happens while an HT630 batch is being collected.
    void OnComm();

    // Pulls the records of a polled scanner and dispatches them; nothing for any
    // other terminal. One that is waiting for its scanner is broken off, keeps what was
    // acknowledged, and starts anew. Nothing is asked for while it could go nowhere: then
    // the user is told. RuntimeError 8018 when the port is closed.
    void transfer();
    // Ends a transfer that waits for its scanner; what was acknowledged is still
    // dispatched.
    void cancelTransfer() { pull_.cancel(); }
    [[nodiscard]] bool transferring() const { return pull_.running(); }
    // Called with true when a transfer begins to wait for its scanner and with false
    // when it no longer does, before anything is dispatched.
    void onTransfer(std::function<void(bool running)> change) {
        transferChanged_ = std::move(change);
    }

private:
    void followPort();
    void pullRecords();
    void keepUntyped(std::string_view reason);

    Platform platform_;
    RunTimeState& state_;
    BatchJournal& journal_;
    std::function<void()> dispatch_;
    std::function<void(bool)> transferChanged_ = [](bool) {};
    BatchReception batches_;
    PullDialogue pull_;
    bool ReceivingBatch = false;
    bool receivingFile_ = false;  // a PT630 batch is being collected
    bool transferAgain_ = false;
    std::atomic<bool> keepsInput_ = false;  // the line's own thread asks
};

}  // namespace kalvo
