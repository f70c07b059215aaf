#include "core/reception/serial_reception.h"

#include <string>
#include <utility>

#include "core/batch_report.h"
#include "core/batch_typing.h"
#include "core/during.h"
#include "core/frame_dispatch.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "settings/serial_settings.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

bool isOptimus(std::string_view terminalType) { return equalIgnoringCase(terminalType, "Optimus"); }

}  // namespace

bool pushesBatches(std::string_view terminalType) {
    return equalIgnoringCase(terminalType, "HT630") || equalIgnoringCase(terminalType, "PT630");
}

bool isPolled(std::string_view terminalType) {
    return equalIgnoringCase(terminalType, "ScanPal") || isOptimus(terminalType);
}

void sayUnknownFlow(const Platform& platform, std::string_view applicationFolder) {
    const std::string flow = unknownFlow(platform.profiles, applicationFolder);
    if (flow.empty()) return;
    platform.icon.notify(std::string("Contrôle de flux inconnu dans PortSerie.ini (Flux="_ansi) +
                             flow +
                             std::string(") : la ligne est ouverte sans contrôle de flux."_ansi),
                         LogLevel::kWarning);
}

std::string lineChangeText(const SerialPort& port, bool lost) {
    const std::string name = "Port COM " + std::to_string(port.CommPort());
    if (!lost) return name + std::string(" : liaison rétablie."_ansi);
    return name + std::string(" : liaison perdue ; le port sera rouvert dès le retour de "_ansi) +
           port.deviceName() + ".";
}

SerialReception::SerialReception(const Platform& platform, RunTimeState& state,
                                 BatchJournal& journal, std::function<void()> dispatch)
    : platform_(platform),
      state_(state),
      journal_(journal),
      dispatch_(std::move(dispatch)),
      batches_(platform, state, journal, dispatch_),
      pull_(platform, state, journal) {
    platform_.port.onComm([this] { OnComm(); });
    followPort();
}

// Whoever opens and closes the port, for whatever terminal: what it brings is kept. A polled
// scanner keeps what it was not told is accepted; a portable forgets.
void SerialReception::followPort() {
    SerialPort& port = platform_.port;
    port.onOpening(
        [this] { keepsInput_ = journal_.keeps() && pushesBatches(state_.TerminalType); });
    port.onInput([this](std::string_view bytes) {
        if (keepsInput_) journal_.keepFlow(bytes);
    });
    port.onClosed([this](std::size_t unread) {
        // What the end of the program leaves unread is found at the next start.
        if (keepsInput_ && unread > 0 && !platform_.events.ending())
            journal_.discardUnread(originOf(platform_, state_), unread,
                                   "non lu à la fermeture du port"_ansi);
    });
}

void SerialReception::configurePort() {
    const std::string_view folder = state_.scenario.applicationFolder;
    const auto stored = [&](std::string_view key) {
        return readPortSerie(platform_.profiles, folder, key);
    };
    SerialPort& port = platform_.port;
    port.setCommPort(integerPart(stored(port_serie::kPort)));
    state_.TerminalType = stored(port_serie::kProtocol);
    sayUnknownFlow(platform_, folder);
    configureLine(port, lineSettings(platform_.profiles, folder),
                  storedHandshaking(platform_.profiles, folder));
}

void SerialReception::openPort() {
    if (platform_.port.PortOpen()) return;
    platform_.port.setPortOpen(true);
    logOpenPort(platform_, state_);
    platform_.dialogs.beep();
}

void SerialReception::OnComm() {
    if (ReceivingBatch || receivingFile_) return;
    try {
        if (equalIgnoringCase(state_.TerminalType, "HT630")) {
            const During receiving([this](bool on) { ReceivingBatch = on; });
            batches_.collectHt630();
        } else if (equalIgnoringCase(state_.TerminalType, "PT630")) {
            const During receiving([this](bool on) { receivingFile_ = on; });
            batches_.collectPt630();
        }
    } catch (const RuntimeError&) {
        batches_.abandon();
        throw;
    }
}

void SerialReception::pullRecords() {
    const During transferring(transferChanged_);
    try {
        pull_.run(isOptimus(state_.TerminalType) ? PullScanner::kOptimus : PullScanner::kScanPal);
    } catch (const RuntimeError& error) {
        // The scanner will send its last record again: typed now, it would come twice.
        if (!state_.ReceivedData.empty()) keepUntyped(error.description());
        throw;
    }
}

void SerialReception::keepUntyped(std::string_view reason) {
    BatchReport report;
    report.outcome = BatchReport::Outcome::kFailed;
    report.batch = std::exchange(state_.batch, BatchJournal::kNone);
    report.reason = reason;
    journal_.failed(report.batch, reason);
    platform_.icon.notify(shortText(report), levelOf(report));
}

void SerialReception::transfer() {
    if (!isPolled(state_.TerminalType)) return;
    if (pull_.running()) {
        transferAgain_ = true;
        pull_.cancel();
        return;
    }
    do {
        transferAgain_ = false;
        if (!canDispatch(platform_, state_)) {
            platform_.icon.notify(
                std::string("Le lecteur n'est pas interrogé : rien ne peut être saisi ("_ansi)
                        .append(keyboardProblem(platform_.keyboard)) +
                    ").",
                LogLevel::kWarning);
            return;
        }
        pullRecords();
        if (!state_.ReceivedData.empty() || state_.TransferEnded) dispatch_();
    } while (transferAgain_);
}

}  // namespace kalvo
