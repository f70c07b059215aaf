#include "platform/asio/asio_serial_port.h"

#include <utility>

#include "platform/asio/line_inbox.h"
#include "platform/asio/serial_line.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kHighestPort = 256;

[[noreturn]] void fail(int number, std::string_view description) {
    throw RuntimeError(number, std::string(description));
}

[[noreturn]] void failNotOpen() {
    fail(error_number::kPortNotOpen, "Le port série n'est pas ouvert"_ansi);
}

[[noreturn]] void failAlreadyOpen() {
    fail(error_number::kPortAlreadyOpen, "Le port série est déjà ouvert"_ansi);
}

}  // namespace

AsioSerialPort::AsioSerialPort(EventPump& pump, PortResolver resolver, PlugWatch watch)
    : resolver_(std::move(resolver)),
      watch_(std::move(watch)),
      inbox_(std::make_shared<LineInbox>(pump)) {}

AsioSerialPort::~AsioSerialPort() {
    inbox_->setEventHandler(nullptr);
    inbox_->setLineHandler(nullptr);
}

void AsioSerialPort::setCommPort(int number) {
    if (PortOpen()) failAlreadyOpen();
    if (number < 1 || number > kHighestPort)
        fail(error_number::kPortInvalid, "Numéro de port série non valide"_ansi);
    if (number != number_) device_ = {};
    number_ = number;
}

void AsioSerialPort::setSettings(std::string_view settings) {
    apply(parseLineSettings(settings), handshaking_);
}

void AsioSerialPort::setHandshaking(Handshaking mode) {
    if (mode < Handshaking::kNone || mode > Handshaking::kRtsAndXon)
        fail(error_number::kPortSettings, "Contrôle de flux non valide"_ansi);
    apply(settings_, mode);
}

void AsioSerialPort::apply(const LineSettings& settings, Handshaking handshaking) {
    if (line_) line_->reconfigure(settings, handshaking);
    settings_ = settings;
    handshaking_ = handshaking;
}

void AsioSerialPort::setRThreshold(int characters) { inbox_->setReceiveThreshold(characters); }

void AsioSerialPort::setSThreshold(int characters) { inbox_->setSendThreshold(characters); }

void AsioSerialPort::setInputMode(int mode) {
    if (mode != 0) fail(error_number::kPortSettings, "Seul le mode texte est disponible"_ansi);
}

void AsioSerialPort::setInputLen(int characters) { inbox_->setInputLength(characters); }

std::string AsioSerialPort::Input() {
    if (!PortOpen()) failNotOpen();
    return inbox_->take();
}

void AsioSerialPort::Output(std::string_view bytes) {
    if (!PortOpen()) failNotOpen();
    line_->send(bytes);
}

std::size_t AsioSerialPort::InBufferCount() const { return inbox_->waiting(); }

void AsioSerialPort::setPortOpen(bool open) {
    if (open) {
        if (PortOpen()) failAlreadyOpen();
        device_ = {};
        openLine();
    } else if (PortOpen()) {
        line_.reset();
        const std::size_t unread = inbox_->clear();
        if (closed_) closed_(unread);
    }
}

void AsioSerialPort::reopen() {
    if (PortOpen()) failAlreadyOpen();
    try {
        openLine();
    } catch (const RuntimeError&) {
        if (!device_.locate) device_ = awaitedDevice();
        line_ = std::make_unique<SerialLine>(SerialLine::kAway, parameters(), inbox_);
    }
}

// What the number will mean once it means something.
PortDevice AsioSerialPort::awaitedDevice() const {
    const auto found = std::make_shared<PortDevice>();
    return {"COM" + std::to_string(number_), "", [found, resolver = resolver_, number = number_] {
                if (!found->locate) *found = resolver(number);
                return found->locate ? found->locate() : std::string();
            }};
}

// The device that was found first stays the port's, wherever it is plugged in meanwhile.
void AsioSerialPort::openLine() {
    if (opening_) opening_();
    if (!device_.locate) device_ = resolver_(number_);
    if (!device_.locate)
        fail(error_number::kPortInvalid, std::string("Le port COM"_ansi) + std::to_string(number_) +
                                             std::string(" n'existe pas sur ce poste"_ansi));
    line_ = std::make_unique<SerialLine>(parameters(), inbox_);
}

LineParameters AsioSerialPort::parameters() const {
    return {device_, settings_, handshaking_, watch_};
}

int AsioSerialPort::CommEvent() const { return inbox_->latestEvent(); }

std::optional<ModemLines> AsioSerialPort::modemLines() const {
    return line_ == nullptr ? std::nullopt : line_->modemLines();
}

void AsioSerialPort::onComm(std::function<void()> handler) {
    inbox_->setEventHandler(std::move(handler));
}

void AsioSerialPort::onInput(std::function<void(std::string_view bytes)> listener) {
    if (PortOpen()) failAlreadyOpen();
    inbox_->setListener(std::move(listener));
}

void AsioSerialPort::onLineChange(std::function<void(bool lost)> handler) {
    inbox_->setLineHandler(std::move(handler));
}

}  // namespace kalvo
