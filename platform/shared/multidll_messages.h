// The functions of a communication library as messages, for one that this process cannot
// load itself: a program of its own loads it and serves it.
//
// Numbers are 32 bits, least significant byte first; texts are their length and their
// characters. A request is the number of the function and its arguments, in their order, but
// for what is only written; the reply is what it returned, then what it wrote. Before the
// first request the server says how loading went: an error number and its text, 0 and "" when
// it went well.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/multidll.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// Carries whole messages to the other end and back.
class MessageStream {
public:
    virtual ~MessageStream() = default;
    // RuntimeError 57 when the other end has gone.
    virtual void send(std::string_view message) = 0;
    [[nodiscard]] virtual std::string receive() = 0;
};

[[nodiscard]] inline RuntimeError otherEndGone() {
    return {error_number::kDeviceIo,
            std::string("Le programme qui sert la bibliothèque Multidll ne répond plus."_ansi)};
}

class MessageWriter {
public:
    MessageWriter& add(std::int32_t number) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes_ += static_cast<char>((static_cast<std::uint32_t>(number) >> shift) & 0xFFU);
        return *this;
    }
    MessageWriter& add(TransferCode code) { return add(static_cast<std::int32_t>(code)); }
    MessageWriter& add(char character) {
        return add(std::int32_t{static_cast<unsigned char>(character)});
    }
    MessageWriter& add(std::string_view text) {
        add(static_cast<std::int32_t>(text.size()));
        bytes_ += text;
        return *this;
    }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// RuntimeError 57 for a message that is shorter than what is read from it.
class MessageReader {
public:
    explicit MessageReader(std::string bytes) : bytes_(std::move(bytes)) {}

    std::int32_t number() {
        std::uint32_t value = 0;
        const std::string_view field = take(4);
        for (std::size_t i = 0; i < field.size(); ++i)
            value |= std::uint32_t{static_cast<unsigned char>(field[i])} << (8 * i);
        return static_cast<std::int32_t>(value);
    }
    TransferCode code() { return static_cast<TransferCode>(number()); }
    char character() { return static_cast<char>(number()); }
    std::string text() {
        const std::int32_t length = number();
        if (length < 0) throw otherEndGone();
        return std::string(take(static_cast<std::size_t>(length)));
    }

private:
    std::string_view take(std::size_t length) {
        if (bytes_.size() - place_ < length) throw otherEndGone();
        place_ += length;
        return std::string_view(bytes_).substr(place_ - length, length);
    }

    std::string bytes_;
    std::size_t place_ = 0;
};

enum class MultidllCall : std::int32_t {
    kOpenCommPort = 1,
    kCloseCommPort,
    kFileExist,
    kPowerSavingOff,
    kPowerSavingOn,
    kUpload1,
    kReturnString,
    kUpload2,
    kDownload1,
    kDownload2,
    kSetEscDelay,
    kSetNakDelay,
    kSetTimeOut,
    kGetEscDelay,
    kGetNakDelay,
    kGetTimeOut,
    kVersion,
};

// A library at the other end.
class ServedMultidll : public Multidll {
public:
    // Throws the error of loading it there. `stream` must outlive it.
    explicit ServedMultidll(MessageStream& stream) : stream_(stream) {
        MessageReader greeting(stream.receive());
        if (const std::int32_t error = greeting.number(); error != 0)
            throw RuntimeError(error, greeting.text());
    }

    TransferCode HM_OpenCommPort(std::int32_t port, std::int32_t speed, std::int32_t dataBits,
                                 std::int32_t parity, std::int32_t stopBits) override {
        return call(MultidllCall::kOpenCommPort, port, speed, dataBits, parity, stopBits).code();
    }
    TransferCode HM_CloseCommPort(std::int32_t port) override {
        return call(MultidllCall::kCloseCommPort, port).code();
    }
    TransferCode HM_file_exist(std::int32_t port, char terminal,
                               std::string_view remoteName) override {
        return call(MultidllCall::kFileExist, port, terminal, remoteName).code();
    }
    TransferCode HM_power_saving_off(std::int32_t port, char terminal) override {
        return call(MultidllCall::kPowerSavingOff, port, terminal).code();
    }
    TransferCode HM_power_saving_on(std::int32_t port, char terminal) override {
        return call(MultidllCall::kPowerSavingOn, port, terminal).code();
    }
    TransferCode HM_upload1(std::int32_t port, char terminal, std::string_view remoteName,
                            std::string_view localName) override {
        return call(MultidllCall::kUpload1, port, terminal, remoteName, localName).code();
    }
    std::int32_t HM_get_return_string_length(std::span<char, kReturnString> text) override {
        MessageReader reply =
            call(MultidllCall::kReturnString, std::string_view(text.data(), text.size()));
        const std::int32_t length = reply.number();
        const std::string left = reply.text();
        std::copy_n(left.begin(), std::min(left.size(), text.size()), text.begin());
        return length;
    }
    TransferCode HM_upload2(std::int32_t& bytes, std::int32_t& packets) override {
        return progress(MultidllCall::kUpload2, bytes, packets);
    }
    TransferCode HM_download1(std::int32_t port, char terminal, std::string_view localName,
                              std::string_view remoteName, std::int32_t& totalSize) override {
        MessageReader reply =
            call(MultidllCall::kDownload1, port, terminal, localName, remoteName, totalSize);
        const TransferCode code = reply.code();
        totalSize = reply.number();
        return code;
    }
    TransferCode HM_download2(std::int32_t& bytes, std::int32_t& packets) override {
        return progress(MultidllCall::kDownload2, bytes, packets);
    }
    void HM_set_ESC_delay(std::int32_t value) override { call(MultidllCall::kSetEscDelay, value); }
    void HM_set_NAK_delay(std::int32_t value) override { call(MultidllCall::kSetNakDelay, value); }
    void HM_set_time_out(std::int32_t value) override { call(MultidllCall::kSetTimeOut, value); }
    std::int32_t HM_get_ESC_delay() override { return call(MultidllCall::kGetEscDelay).number(); }
    std::int32_t HM_get_NAK_delay() override { return call(MultidllCall::kGetNakDelay).number(); }
    std::int32_t HM_get_time_out() override { return call(MultidllCall::kGetTimeOut).number(); }
    std::int32_t HM_version() override { return call(MultidllCall::kVersion).number(); }

private:
    template <typename... Arguments>
    MessageReader call(MultidllCall function, const Arguments&... arguments) {
        MessageWriter request;
        request.add(static_cast<std::int32_t>(function));
        (request.add(arguments), ...);
        stream_.send(request.bytes());
        return MessageReader(stream_.receive());
    }
    TransferCode progress(MultidllCall function, std::int32_t& bytes, std::int32_t& packets) {
        MessageReader reply = call(function, bytes, packets);
        const TransferCode code = reply.code();
        bytes = reply.number();
        packets = reply.number();
        return code;
    }

    MessageStream& stream_;
};

}  // namespace kalvo
