#include "core/serial_reception.h"

#include <string>

#include "platform/dialogs.h"
#include "platform/serial_port.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

// A flag that is set while something goes on, also when it ends with an error.
class WhileTrue {
public:
    explicit WhileTrue(bool& flag) : flag_(flag) { flag_ = true; }
    WhileTrue(const WhileTrue&) = delete;
    WhileTrue& operator=(const WhileTrue&) = delete;
    ~WhileTrue() { flag_ = false; }

private:
    bool& flag_;
};

// Tells that something goes on, and that it no longer does, also after an error.
class Announcement {
public:
    explicit Announcement(const std::function<void(bool)>& change) : change_(change) {
        change_(true);
    }
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;
    ~Announcement() { change_(false); }

private:
    const std::function<void(bool)>& change_;
};

}  // namespace

bool pushesBatches(std::string_view terminalType) {
    return equalIgnoringCase(terminalType, "HT630") || equalIgnoringCase(terminalType, "PT630");
}

SerialReception::SerialReception(const Platform& platform, RunTimeState& state,
                                 std::function<void()> dispatch)
    : platform_(platform),
      state_(state),
      dispatch_(std::move(dispatch)),
      batches_(platform, state, dispatch_),
      pull_(platform, state) {
    platform_.port.onComm([this] { OnComm(); });
}

void SerialReception::configurePort() {
    const std::string_view folder = state_.scenario.applicationFolder;
    const auto stored = [&](std::string_view key) {
        return readPortSerie(platform_.profiles, folder, key);
    };
    SerialPort& port = platform_.port;
    port.setCommPort(integerPart(stored(port_serie::kPort)));
    state_.TerminalType = stored(port_serie::kProtocol);
    configureLine(port, lineSettings(platform_.profiles, folder),
                  storedHandshaking(platform_.profiles, folder));
}

void SerialReception::openPort() {
    if (platform_.port.PortOpen()) return;
    platform_.port.setPortOpen(true);
    platform_.dialogs.beep();
}

void SerialReception::OnComm() {
    if (ReceivingBatch) return;
    if (equalIgnoringCase(state_.TerminalType, "HT630")) {
        const WhileTrue receiving(ReceivingBatch);
        batches_.collectHt630();
    } else if (equalIgnoringCase(state_.TerminalType, "PT630")) {
        batches_.collectPt630();
    }
}

void SerialReception::transfer() {
    const bool scanPal = equalIgnoringCase(state_.TerminalType, "ScanPal");
    const bool optimus = equalIgnoringCase(state_.TerminalType, "Optimus");
    if (pull_.running() || (!scanPal && !optimus)) return;
    {
        const Announcement announcement(transferChanged_);
        pull_.run(scanPal ? PullScanner::kScanPal : PullScanner::kOptimus);
    }
    if (!state_.ReceivedData.empty() || state_.TransferEnded) dispatch_();
}

}  // namespace kalvo
