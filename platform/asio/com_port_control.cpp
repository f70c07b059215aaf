#include "platform/asio/com_port_control.h"

namespace kalvo {

namespace {

// Telnet's commands and the options used here.
constexpr unsigned char kEndOfSubnegotiation = 240;
constexpr unsigned char kSubnegotiation = 250;
constexpr unsigned char kWill = 251;
constexpr unsigned char kWont = 252;
constexpr unsigned char kDo = 253;
constexpr unsigned char kDont = 254;
constexpr unsigned char kCommand = 255;  // a byte 255 of the line is doubled

constexpr unsigned char kBinary = 0;
constexpr unsigned char kNoGoAhead = 3;
constexpr unsigned char kComPort = 44;

// Orders about the port.
constexpr unsigned char kSetSpeed = 1;
constexpr unsigned char kSetDataBits = 2;
constexpr unsigned char kSetParity = 3;
constexpr unsigned char kSetStopBits = 4;
constexpr unsigned char kSetControl = 5;
constexpr unsigned char kPurge = 12;

constexpr char kDtrOn = 8;
constexpr char kRtsOn = 11;
constexpr char kReceived = 1;  // what a purge drops

bool known(unsigned char option) {
    return option == kBinary || option == kNoGoAhead || option == kComPort;
}

std::string command(unsigned char verb, unsigned char option) {
    return {static_cast<char>(kCommand), static_cast<char>(verb), static_cast<char>(option)};
}

std::string order(unsigned char what, const std::string& value) {
    return command(kSubnegotiation, kComPort) + static_cast<char>(what) +
           ComPortControl::encode(value) + static_cast<char>(kCommand) +
           static_cast<char>(kEndOfSubnegotiation);
}

std::string speedValue(std::uint32_t speed) {
    std::string value;
    for (int shift = 24; shift >= 0; shift -= 8)
        value += static_cast<char>(speed >> static_cast<unsigned>(shift) & 0xFFU);
    return value;
}

char parityValue(Parity parity) {
    switch (parity) {
        case Parity::kOdd: return 2;
        case Parity::kEven: return 3;
        case Parity::kMark: return 4;
        case Parity::kSpace: return 5;
        case Parity::kNone: break;
    }
    return 1;
}

char stopBitsValue(StopBits stopBits) {
    switch (stopBits) {
        case StopBits::kTwo: return 2;
        case StopBits::kOneAndHalf: return 3;
        case StopBits::kOne: break;
    }
    return 1;
}

// One mode only: hardware where both are wanted.
char flowValue(Handshaking handshaking) {
    if (handshaking == Handshaking::kNone) return 1;
    return handshaking == Handshaking::kXonXoff ? 2 : 3;
}

}  // namespace

std::string ComPortControl::greeting() {
    std::string text;
    for (const unsigned char option : {kComPort, kBinary, kNoGoAhead}) {
        offered_.insert(option);
        text += command(kWill, option);
    }
    for (const unsigned char option : {kBinary, kNoGoAhead}) {
        wanted_.insert(option);
        text += command(kDo, option);
    }
    return text;
}

std::string ComPortControl::settingsText() const {
    return order(kSetSpeed, speedValue(settings_.speed)) +
           order(kSetDataBits, {static_cast<char>(settings_.dataBits)}) +
           order(kSetParity, {parityValue(settings_.parity)}) +
           order(kSetStopBits, {stopBitsValue(settings_.stopBits)}) +
           order(kSetControl, {flowValue(handshaking_)}) + order(kSetControl, {kDtrOn}) +
           (flowValue(handshaking_) == 3 ? std::string() : order(kSetControl, {kRtsOn}));
}

std::string ComPortControl::configure(const LineSettings& settings, Handshaking handshaking) {
    settings_ = settings;
    handshaking_ = handshaking;
    return agreed_ ? settingsText() : std::string();
}

// Only what changes something is answered, so that two sides never answer each other for ever.
std::string ComPortControl::answerTo(unsigned char verb, unsigned char option) {
    std::string answer;
    if (verb == kDo) {
        if (offered_.insert(option).second) answer = command(known(option) ? kWill : kWont, option);
        if (option == kComPort && !agreed_) {
            agreed_ = true;
            answer += settingsText() + order(kPurge, {kReceived});
        }
    } else if (verb == kWill && wanted_.insert(option).second) {
        answer = command(known(option) ? kDo : kDont, option);
    }
    return answer;
}

ComPortControl::Received ComPortControl::receive(std::string_view stream) {
    Received received;
    for (const char character : stream) {
        const auto byte = static_cast<unsigned char>(character);
        switch (place_) {
            case Place::kData:
                if (byte == kCommand)
                    place_ = Place::kCommand;
                else
                    received.bytes += character;
                break;
            case Place::kCommand:
                place_ = Place::kData;
                verb_ = byte;
                if (byte == kCommand) received.bytes += character;
                if (byte == kSubnegotiation) place_ = Place::kSubnegotiation;
                if (byte >= kWill && byte <= kDont) place_ = Place::kOption;
                break;
            case Place::kOption:
                received.answer += answerTo(verb_, byte);
                place_ = Place::kData;
                break;
            case Place::kSubnegotiation:  // what the server says of its port
                if (byte == kCommand) place_ = Place::kSubnegotiationCommand;
                break;
            case Place::kSubnegotiationCommand:
                place_ = byte == kEndOfSubnegotiation ? Place::kData : Place::kSubnegotiation;
                break;
        }
    }
    return received;
}

std::string ComPortControl::encode(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += byte;
        if (static_cast<unsigned char>(byte) == kCommand) text += byte;
    }
    return text;
}

}  // namespace kalvo
