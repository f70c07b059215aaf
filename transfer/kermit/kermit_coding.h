// What the two sides of a Kermit transfer agree on, and the coding of data that follows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kalvo {

// The prefixes of packet data; 0 where a kind of prefix is not in use.
struct KermitPrefixes {
    char control = '#';
    char eighthBit = 0;
    char repeat = 0;
};

// Appends to `data` the coded form of as many bytes as fit into `room` characters;
// how many bytes those are.
std::size_t encodeData(std::string_view bytes, const KermitPrefixes& prefixes, std::size_t room,
                       std::string& data);
// The coded form of all of a short text.
[[nodiscard]] std::string encodeWhole(std::string_view text, const KermitPrefixes& prefixes);
// Appends the bytes that `data` stands for; false when it ends inside a prefix.
[[nodiscard]] bool decodeData(std::string_view data, const KermitPrefixes& prefixes,
                              std::string& bytes);

// What one side says of itself.
struct KermitParameters {
    int packetLength = 80;  // the longest packet it takes
    int timeOut = 5;        // seconds the other side should wait for it
    int padding = 0;
    char paddingCharacter = 0;
    char endOfLine = '\r';
    char control = '#';
    char eighthBit = 'Y';  // 'Y' can, 'N' cannot, else the prefix it wants
    int blockCheck = 1;
    char repeat = ' ';
    bool attributes = false;
};

// Everything we can, on a line of so many characters a second.
[[nodiscard]] KermitParameters fullParameters(int charactersPerSecond);

[[nodiscard]] std::string encodeParameters(const KermitParameters& parameters);
// What is absent has the value the protocol gives it.
[[nodiscard]] KermitParameters parseParameters(std::string_view data);

struct KermitAgreement {
    int blockCheck = 1;
    KermitPrefixes sending;
    KermitPrefixes receiving;
};
[[nodiscard]] KermitAgreement agree(const KermitParameters& ours, const KermitParameters& theirs);

// Our parameters as the answer to theirs: what they want, where we can.
[[nodiscard]] KermitParameters answerTo(KermitParameters ours, const KermitParameters& theirs);

}  // namespace kalvo
