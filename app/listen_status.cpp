#include "app/listen_status.h"

#include "app/process/service_report.h"
#include "journal/batch_journal.h"
#include "text/ansi_text.h"
#include "text/one_line.h"

namespace kalvo {

void ListenStatus::logged(LogLevel level, std::string_view text) noexcept {
    if (level != LogLevel::kWarning && level != LogLevel::kError) return;
    const std::lock_guard lock(mutex_);
    lastError_ = timeText(events_.now()) + " " + onOneLine(text);
    tell();
}

void ListenStatus::scenario(std::string_view name) {
    const std::lock_guard lock(mutex_);
    scenario_ = name;
    tell();
}

void ListenStatus::port(const SerialPort& port, bool lost) {
    const std::lock_guard lock(mutex_);
    port_ = "COM" + std::to_string(port.CommPort());
    if (!port.PortOpen())
        port_ += std::string(" fermé"_ansi);
    else
        port_ += lost ? std::string(" attendu, "_ansi) + port.deviceName()
                      : " ouvert, " + port.deviceName();
    tell();
}

void ListenStatus::batchDone() {
    const std::lock_guard lock(mutex_);
    ++batches_;
    tell();
}

void ListenStatus::tell() {
    const std::string batches = std::to_string(batches_);
    site_.tell("Port : " + port_ + std::string("\nScénario : "_ansi) + scenario_ + "\nLots : " +
               batches + std::string("\nDernière erreur : "_ansi) + lastError_ + "\n");
    reportToServiceManager(toUtf8("STATUS=" + port_ + ", lots : " + batches));
}

}  // namespace kalvo
