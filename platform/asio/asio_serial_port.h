// The serial port over standalone Asio, for Linux and Windows.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/asio/line_settings.h"
#include "platform/event_pump.h"
#include "platform/port_device.h"
#include "platform/serial_port.h"

namespace kalvo {

class LineInbox;
class SerialLine;
struct LineParameters;

// While the port is open a thread of its own drains the line into a queue without a
// limit, so a busy program loses nothing. The handlers come from the pump and never
// after this object is gone; a handler may destroy it.
//
// When the device is unplugged PortOpen() stays true, as it says what the program
// wants: the line is tried again every second, and whenever something is plugged in, and
// goes on with the same settings when that very device is back, wherever it is plugged in.
// Meanwhile Output() fails with 8012; received bytes can be taken.
//
// Opening raises DTR and RTS. Opening errors besides those of SerialPort: 70, no
// permission for the device. A close waits up to half a second for queued output.
// What a pseudo-terminal cannot have (data bits, parity) is accepted on it and has no
// effect; elsewhere what the line cannot do is error 380 on opening.
class AsioSerialPort : public SerialPort {
public:
    // The device of a port number; none is error 8002 on opening. The port's thread asks, too.
    using PortResolver = std::function<PortDevice(int portNumber)>;

    // The pump must outlive the port; from the port's thread only its post() is used.
    AsioSerialPort(EventPump& pump, PortResolver resolver, PlugWatch watch = nullptr);
    ~AsioSerialPort() override;
    AsioSerialPort(const AsioSerialPort&) = delete;
    AsioSerialPort& operator=(const AsioSerialPort&) = delete;

    void setCommPort(int number) override;
    [[nodiscard]] int CommPort() const override { return number_; }
    void setSettings(std::string_view settings) override;
    void setHandshaking(Handshaking mode) override;
    void setRThreshold(int characters) override;
    void setSThreshold(int characters) override;
    void setInputMode(int mode) override;
    void setInputLen(int characters) override;
    std::string Input() override;
    void Output(std::string_view bytes) override;
    [[nodiscard]] std::size_t InBufferCount() const override;
    void setPortOpen(bool open) override;
    void reopen() override;
    [[nodiscard]] bool PortOpen() const override { return line_ != nullptr; }
    [[nodiscard]] int CommEvent() const override;
    [[nodiscard]] std::optional<ModemLines> modemLines() const override;
    void onComm(std::function<void()> handler) override;
    void onInput(std::function<void(std::string_view bytes)> listener) override;
    void onOpening(std::function<void()> handler) override { opening_ = std::move(handler); }
    void onClosed(std::function<void(std::size_t unread)> handler) override {
        closed_ = std::move(handler);
    }
    void onLineChange(std::function<void(bool lost)> handler) override;
    [[nodiscard]] std::string deviceName() const override { return device_.name; }
    [[nodiscard]] std::string identity(int number) const override {
        return resolver_(number).identity;
    }

private:
    void openLine();
    [[nodiscard]] PortDevice awaitedDevice() const;
    [[nodiscard]] LineParameters parameters() const;
    void apply(const LineSettings& settings, Handshaking handshaking);

    PortResolver resolver_;
    PlugWatch watch_;
    int number_ = 1;
    PortDevice device_;  // of the number, once it has been opened or tried
    LineSettings settings_;
    Handshaking handshaking_ = Handshaking::kNone;
    std::shared_ptr<LineInbox> inbox_;
    std::unique_ptr<SerialLine> line_;
    std::function<void()> opening_;
    std::function<void(std::size_t)> closed_;
};

}  // namespace kalvo
