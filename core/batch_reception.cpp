#include "core/batch_reception.h"

#include <algorithm>
#include <cstddef>
#include <memory>

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
    std::string batch;
    std::size_t searched = 0;
    for (;;) {
        platform_.events.DoEvents();
        platform_.events.Sleep(kHt630PollInterval);
        batch += platform_.port.Input();
        if (batch.size() < kShortestBatch) return;
        // Only the new part can hold the end, but for what may have begun before.
        const std::size_t end = batch.find(kEndOfBatch, searched);
        if (end != std::string::npos) {
            batch.resize(end);
            state_.ReceivedData = std::move(batch);
            dispatch_();
            return;
        }
        searched = batch.size() - std::min(batch.size(), kEndOfBatch.size() - 1);
    }
}

void BatchReception::collectPt630() {
    state_.ReceivedData = storePt630();
    if (state_.ReceivedData.empty() || state_.ReceivedData == kEmptyBatch) {
        removeFile(temporaryFile_);
        platform_.progress.unload();
        return;
    }
    if (state_.ReceivedData.back() == kConnected) {
        platform_.dialogs.message("Terminal connecté"_ansi, kApplicationTitle,
                                  MessageIcon::kInformation);
        platform_.progress.unload();
        // The file stays: it is what one looks at when a terminal will not connect.
        return;
    }
    const std::string file = temporaryFile_;
    actOnPt630Event();
    removeFile(file);
}

std::string BatchReception::storePt630() {
    SerialPort& port = platform_.port;
    port.setInputLen(0);
    temporaryFile_ =
        inFolder(state_.scenario.applicationFolder, temporaryName(platform_.events.now()));
    const auto file = platform_.files.create(temporaryFile_);
    platform_.events.Sleep(1);
    platform_.progress.setLabel("");
    platform_.progress.setLabel("Préparation de la mémoire"_ansi);
    platform_.progress.show();
    for (;;) {
        file->write(port.Input());
        if (port.InBufferCount() == 0) platform_.events.Sleep(kPt630Silence);
        if (port.InBufferCount() == 0) break;
        platform_.progress.refresh();
    }
    platform_.events.Sleep(kPt630SettleTime);
    file->close();
    return platform_.files.read(temporaryFile_);
}

void BatchReception::removeFile(const std::string& file) {
    resumeNext([&] { platform_.files.remove(file); });
}

void BatchReception::actOnPt630Event() {
    const auto say = [this](std::string_view text) {
        platform_.dialogs.message(text, kApplicationTitle, MessageIcon::kInformation);
    };
    switch (platform_.port.CommEvent()) {
        case comm_event::kReceive:
        case comm_event::kCts: dispatch_(); break;
        case comm_event::kBreak: say("Réception d'un signal d'arrêt"_ansi); break;
        case comm_event::kReceiveOverflow:
            say("Dépassement de la capacité du tampon de réception"_ansi);
            break;
        case comm_event::kSendFull: say("Tampon de transmission plein"); break;
        case comm_event::kSend: break;
        default: say("Erreur ou evenement inconnu");
    }
}

}  // namespace kalvo
