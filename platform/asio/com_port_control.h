// The serial port of a device server, controlled in the stream of its bytes: RFC 2217.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/asio/line_settings.h"
#include "platform/serial_port.h"

namespace kalvo {

// Both directions of one connection, without the connection: what it returns is to be sent.
class ComPortControl {
public:
    ComPortControl(const LineSettings& settings, Handshaking handshaking)
        : settings_(settings), handshaking_(handshaking) {}

    // What opens the talk.
    [[nodiscard]] std::string greeting();

    struct Received {
        std::string bytes;   // of the line
        std::string answer;  // for the server; may be empty
    };
    // What came from the server, cut anywhere.
    [[nodiscard]] Received receive(std::string_view stream);

    // Bytes of the line as they are sent.
    [[nodiscard]] static std::string encode(std::string_view bytes);

    // Other settings; nothing to send as long as the server has not agreed to take any.
    [[nodiscard]] std::string configure(const LineSettings& settings, Handshaking handshaking);

private:
    [[nodiscard]] std::string answerTo(unsigned char verb, unsigned char option);
    [[nodiscard]] std::string settingsText() const;

    enum class Place { kData, kCommand, kOption, kSubnegotiation, kSubnegotiationCommand };

    LineSettings settings_;
    Handshaking handshaking_;
    bool agreed_ = false;
    std::set<unsigned char> offered_;  // WILL has been said
    std::set<unsigned char> wanted_;   // DO has been said
    Place place_ = Place::kData;
    unsigned char verb_ = 0;
};

}  // namespace kalvo
