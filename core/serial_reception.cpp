#include "core/serial_reception.h"

#include <string>

#include "core/during.h"
#include "platform/dialogs.h"
#include "platform/serial_port.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

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
        const During receiving([this](bool on) { ReceivingBatch = on; });
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
        const During transferring(transferChanged_);
        pull_.run(scanPal ? PullScanner::kScanPal : PullScanner::kOptimus);
    }
    if (!state_.ReceivedData.empty() || state_.TransferEnded) dispatch_();
}

}  // namespace kalvo
