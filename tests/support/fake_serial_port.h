// A serial port whose other end is the test.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/serial_port.h"
#include "text/runtime_error.h"

namespace kalvo::testing {

class FakeSerialPort : public SerialPort {
public:
    // What was done to the port, in order: "Settings=9600,N,8,1", "PortOpen=1", ...
    std::vector<std::string> log;
    std::string waiting;
    std::string sent;
    int event = comm_event::kReceive;
    int openError = 0;
    int port = 1;
    bool open = false;
    int inputLen = 0;
    std::map<int, std::string> identities;
    // Called after each Output with what was sent.
    std::function<void(std::string_view)> whenSent;

    // Bytes from the terminal; raises the receive event as the pump would.
    void receive(std::string_view bytes) {
        arrive(bytes);
        if (comm_) comm_();
    }
    // The same before the event is delivered.
    void arrive(std::string_view bytes) {
        if (input_) input_(bytes);
        waiting += bytes;
    }

    void setCommPort(int number) override {
        log.push_back("CommPort=" + std::to_string(number));
        port = number;
    }
    [[nodiscard]] int CommPort() const override { return port; }
    void setSettings(std::string_view settings) override {
        log.push_back("Settings=" + std::string(settings));
    }
    void setHandshaking(Handshaking mode) override {
        log.push_back("Handshaking=" + std::to_string(static_cast<int>(mode)));
    }
    void setRThreshold(int n) override { log.push_back("RThreshold=" + std::to_string(n)); }
    void setSThreshold(int n) override { log.push_back("SThreshold=" + std::to_string(n)); }
    void setInputMode(int mode) override { log.push_back("InputMode=" + std::to_string(mode)); }
    void setInputLen(int n) override {
        if (n != inputLen) log.push_back("InputLen=" + std::to_string(n));
        inputLen = n;
    }
    std::string Input() override {
        const std::size_t length =
            inputLen == 0 ? waiting.size() : static_cast<std::size_t>(inputLen);
        std::string taken = waiting.substr(0, length);
        waiting.erase(0, length);
        return taken;
    }
    void Output(std::string_view bytes) override {
        if (!open) throw RuntimeError(error_number::kPortNotOpen, "Port fermé");
        sent += bytes;
        if (whenSent) whenSent(bytes);
    }
    [[nodiscard]] std::size_t InBufferCount() const override { return waiting.size(); }
    void setPortOpen(bool wanted) override {
        log.push_back(std::string("PortOpen=") + (wanted ? "1" : "0"));
        if (wanted && opening_) opening_();
        const std::size_t unread = std::exchange(waiting, {}).size();
        if (!wanted && closed_) closed_(unread);
        if (wanted && openError != 0) throw RuntimeError(openError, "Port refusé");
        open = wanted;
    }
    void reopen() override {
        log.emplace_back("reopen");
        if (opening_) opening_();
        open = true;
    }
    [[nodiscard]] bool PortOpen() const override { return open; }
    [[nodiscard]] int CommEvent() const override { return event; }
    void onComm(std::function<void()> handler) override { comm_ = std::move(handler); }
    void onInput(std::function<void(std::string_view)> listener) override {
        input_ = std::move(listener);
    }
    void onLineChange(std::function<void(bool)>) override {}
    [[nodiscard]] std::string deviceName() const override { return {}; }
    [[nodiscard]] std::string identity(int number) const override {
        const auto found = identities.find(number);
        return found == identities.end() ? "" : found->second;
    }
    void onOpening(std::function<void()> handler) override { opening_ = std::move(handler); }
    void onClosed(std::function<void(std::size_t)> handler) override {
        closed_ = std::move(handler);
    }

private:
    std::function<void()> opening_;
    std::function<void(std::size_t)> closed_;
    std::function<void()> comm_;
    std::function<void(std::string_view)> input_;
};

}  // namespace kalvo::testing
