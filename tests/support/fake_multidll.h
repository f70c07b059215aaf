// A library for portables that writes down its calls and answers what a test wants.
#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/multidll.h"

namespace kalvo::testing {

class FakeMultidll : public Multidll {
public:
    // "exist 1 A TESTFILE.$$$" and so on, in order.
    std::vector<std::string> calls;
    TransferCode exists = TransferCode::kSuccess;
    TransferCode powerOff = TransferCode::kSuccess;
    TransferCode powerOn = TransferCode::kSuccess;
    TransferCode begun = TransferCode::kSuccess;
    // What the packet functions return one after the other; then kSuccess.
    std::deque<TransferCode> packets;
    std::function<void()> onPacket = [] {};
    std::string storedName;
    std::int32_t totalSize = 300;
    std::int32_t escDelay = 1;
    std::int32_t nakDelay = 2;
    std::int32_t timeOut = 3;

    TransferCode HM_OpenCommPort(std::int32_t port, std::int32_t speed, std::int32_t dataBits,
                                 std::int32_t parity, std::int32_t stopBits) override {
        return note(TransferCode::kSuccess, "open", port, speed, dataBits, parity, stopBits);
    }
    TransferCode HM_CloseCommPort(std::int32_t port) override {
        return note(TransferCode::kSuccess, "close", port);
    }
    TransferCode HM_file_exist(std::int32_t port, char terminal, std::string_view name) override {
        return note(exists, "exist", port, terminal, name);
    }
    TransferCode HM_power_saving_off(std::int32_t port, char terminal) override {
        return note(powerOff, "off", port, terminal);
    }
    TransferCode HM_power_saving_on(std::int32_t port, char terminal) override {
        return note(powerOn, "on", port, terminal);
    }
    TransferCode HM_upload1(std::int32_t port, char terminal, std::string_view remote,
                            std::string_view local) override {
        return note(begun, "upload1", port, terminal, remote, local);
    }
    std::int32_t HM_get_return_string_length(std::span<char, kReturnString> text) override {
        const std::string before(text.data(), strnlen(text.data(), text.size()));
        note(begun, "name", before);
        const std::string& name = storedName.empty() ? before : storedName;
        std::copy(name.begin(), name.end(), text.begin());
        return static_cast<std::int32_t>(name.size());
    }
    TransferCode HM_upload2(std::int32_t& bytes, std::int32_t& count) override {
        return packet("upload2", bytes, count);
    }
    TransferCode HM_download1(std::int32_t port, char terminal, std::string_view local,
                              std::string_view remote, std::int32_t& size) override {
        size = totalSize;
        return note(begun, "download1", port, terminal, local, remote);
    }
    TransferCode HM_download2(std::int32_t& bytes, std::int32_t& count) override {
        return packet("download2", bytes, count);
    }
    // The delays are kept within 100, as a library may.
    void HM_set_ESC_delay(std::int32_t value) override { escDelay = std::min(value, 100); }
    void HM_set_NAK_delay(std::int32_t value) override { nakDelay = std::min(value, 100); }
    void HM_set_time_out(std::int32_t value) override { timeOut = std::min(value, 100); }
    std::int32_t HM_get_ESC_delay() override { return escDelay; }
    std::int32_t HM_get_NAK_delay() override { return nakDelay; }
    std::int32_t HM_get_time_out() override { return timeOut; }
    std::int32_t HM_version() override { return 214; }

private:
    template <typename... Arguments>
    TransferCode note(TransferCode answer, const char* function, const Arguments&... arguments) {
        std::ostringstream line;
        line << function;
        ((line << ' ' << arguments), ...);
        calls.push_back(line.str());
        return answer;
    }
    // Every packet is of 100 bytes.
    TransferCode packet(const char* function, std::int32_t& bytes, std::int32_t& count) {
        bytes += 100;
        ++count;
        note(TransferCode::kSuccess, function);
        onPacket();
        if (packets.empty()) return TransferCode::kSuccess;
        const TransferCode code = packets.front();
        packets.pop_front();
        return code;
    }
};

}  // namespace kalvo::testing
