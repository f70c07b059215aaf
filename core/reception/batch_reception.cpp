#include "core/reception/batch_reception.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/progress.h"
#include "platform/serial_port.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr int kHt630PollInterval = 300;  // milliseconds
constexpr std::size_t kShortestBatch = 4;
constexpr int kPt630Silence = 500;
constexpr int kPt630SettleTime = 1000;

// Day, month, year, hour, minute and second, none of them padded.
std::string temporaryName(const LocalTime& time) {
    std::string name;
    for (const int part : {time.day, time.month, time.year, time.hour, time.minute, time.second})
        name += std::to_string(part);
    return name + ".tmp";
}

}  // namespace

void BatchReception::collectHt630() {
    platform_.port.setInputLen(0);
    std::string& batch = read_;
    batch.clear();
    std::size_t searched = 0;
    for (;;) {
        platform_.events.DoEvents();
        platform_.events.Sleep(kHt630PollInterval);
        batch += platform_.port.Input();
        if (batch.size() < kShortestBatch) {
            journal_.discard(originOf(platform_, state_), batch, "trop court pour un lot"_ansi,
                             batch.size());
            batch.clear();
            return;
        }
        // Only the new part can hold the end, but for what may have begun before.
        const std::size_t end = batch.find(kEndOfBatch, searched);
        if (end != std::string::npos) {
            const std::size_t taken = batch.size();
            const std::string behindEnd = batch.substr(end + kEndOfBatch.size());
            batch.resize(end);
            state_.ReceivedData = std::exchange(batch, {});
            dispatchNew(behindEnd, taken);
            return;
        }
        searched = batch.size() - std::min(batch.size(), kEndOfBatch.size() - 1);
    }
}

void BatchReception::dispatchNew(std::string_view behindEnd, std::size_t taken) {
    state_.batch =
        journal_.receive(originOf(platform_, state_), state_.ReceivedData, behindEnd, taken);
    dispatch_();
}

void BatchReception::collectPt630() {
    const std::string file =
        inFolder(state_.scenario.applicationFolder, temporaryName(platform_.events.now()));
    std::unique_ptr<TextStream> copy;
    resumeNext([&] { copy = platform_.files.createNew(file); });
    receivePt630(copy.get());
    state_.ReceivedData = std::exchange(read_, {});
    if (copy) resumeNext([&] { copy->close(); });

    const std::string& data = state_.ReceivedData;
    const bool announced = !data.empty() && data.back() == kConnected;
    if (announced && data.find('\r') != std::string::npos)
        journal_.discard(originOf(platform_, state_), data, "suivi de l'annonce du terminal"_ansi,
                         data.size());
    else if (data.empty() || data == kEmptyBatch || announced)
        journal_.forgetFlow(data.size());  // nothing that anybody could want again
    if (data.empty() || data == kEmptyBatch || announced) platform_.progress.unload();
    if (announced) {
        platform_.dialogs.message("Terminal connecté"_ansi, kApplicationTitle,
                                  MessageIcon::kInformation);
        // The file stays: it is what one looks at when a terminal will not connect.
        return;
    }
    if (!data.empty() && data != kEmptyBatch) actOnPt630Event();
    if (copy) resumeNext([&] { platform_.files.remove(file); });
}

void BatchReception::receivePt630(TextStream* copy) {
    SerialPort& port = platform_.port;
    port.setInputLen(0);
    platform_.events.Sleep(1);
    platform_.progress.setLabel("");
    platform_.progress.setLabel("Préparation de la mémoire"_ansi);
    platform_.progress.show();
    read_.clear();
    for (;;) {
        const std::string piece = port.Input();
        read_ += piece;
        // A disk that is full costs the copy, not the batch.
        if (copy != nullptr && !resumeNext([&] { copy->write(piece); })) copy = nullptr;
        if (port.InBufferCount() == 0) platform_.events.Sleep(kPt630Silence);
        if (port.InBufferCount() == 0) break;
        platform_.progress.refresh();
        // A line that never falls silent must not keep the program from ending.
        platform_.events.DoEvents();
    }
    platform_.events.Sleep(kPt630SettleTime);
}

void BatchReception::abandon() {
    const std::string read = std::exchange(read_, {});
    journal_.discard(originOf(platform_, state_), read, "réception interrompue"_ansi, read.size());
}

void BatchReception::actOnPt630Event() {
    const std::size_t taken = state_.ReceivedData.size();
    const auto drop = [&](std::string_view text) {
        journal_.discard(originOf(platform_, state_), state_.ReceivedData, text, taken);
        platform_.dialogs.message(text, kApplicationTitle, MessageIcon::kInformation);
    };
    switch (platform_.port.CommEvent()) {
        case comm_event::kReceive:
        case comm_event::kCts: dispatchNew({}, taken); break;
        case comm_event::kBreak: drop("Réception d'un signal d'arrêt"_ansi); break;
        case comm_event::kReceiveOverflow:
            drop("Dépassement de la capacité du tampon de réception"_ansi);
            break;
        case comm_event::kSendFull: drop("Tampon de transmission plein"); break;
        case comm_event::kSend:
            journal_.discard(originOf(platform_, state_), state_.ReceivedData,
                             "la ligne n'a signalé qu'un envoi"_ansi, taken);
            break;
        default: drop("Erreur ou evenement inconnu");
    }
}

}  // namespace kalvo
