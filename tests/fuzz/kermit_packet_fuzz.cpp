// Packets and their data read back as they were written; any other bytes are refused or
// understood, the same whatever pieces they come in.
#include <vector>

#include "tests/fuzz/fuzz_property.h"
#include "transfer/kermit/kermit_coding.h"
#include "transfer/kermit/kermit_packet.h"

namespace kalvo {
namespace {

// Type and data of each packet, "?" for each damaged one.
std::vector<std::string> packetsIn(std::string_view bytes, std::size_t piece, int blockCheck) {
    KermitPacketReader reader;
    std::vector<std::string> packets;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        reader.feed(bytes.substr(at, piece));
        KermitPacket packet;
        for (auto result = reader.next(blockCheck, packet);
             result != KermitPacketReader::Result::kMore;
             result = reader.next(blockCheck, packet)) {
            const bool whole = result == KermitPacketReader::Result::kPacket;
            packets.push_back(whole ? packet.type + packet.data : "?");
            require(packets.size() <= bytes.size(), "every result takes bytes");
            require(packet.sequence >= 0 && packet.sequence < kKermitSequences,
                    "a packet has one of the sequence numbers");
        }
    }
    return packets;
}

void checkCoding(const std::string& bytes, std::size_t room, int blockCheck) {
    const KermitPrefixes prefixes{'#', room % 2 == 0 ? '&' : '\0', room % 3 == 0 ? '~' : '\0'};
    std::string coded;
    const std::size_t done = encodeData(bytes, prefixes, room, coded);
    require(coded.size() <= room, "coded data keeps to its room");
    require(done > 0 || room < 5 || bytes.empty(), "what fits is taken");
    std::string decoded;
    require(decodeData(coded, prefixes, decoded) && decoded == bytes.substr(0, done),
            "decoded data is what was encoded");
    const std::string line = "noise" + encodePacket({'D', 63, coded}, blockCheck, '\r');
    require(packetsIn(line, line.size(), blockCheck) == std::vector{"D" + coded},
            "a packet is read as it was written");
}

void checkAnswers(std::string_view data) {
    const KermitParameters theirs = parseParameters(data);
    require(theirs.packetLength >= 20 && theirs.packetLength <= kLongestPacket,
            "a packet has room for data, and an end");
    const KermitParameters again = parseParameters(encodeParameters(theirs));
    require(again.blockCheck == theirs.blockCheck && again.control == theirs.control &&
                again.eighthBit == theirs.eighthBit && again.repeat == theirs.repeat &&
                again.packetLength == theirs.packetLength,
            "parameters are read as they were written");
}

}  // namespace

void fuzz(FuzzInput& input) {
    const int blockCheck = input.ConsumeIntegralInRange(1, 3);
    const auto room = input.ConsumeIntegralInRange<std::size_t>(0, kLongestPacket);
    const std::string bytes = input.rest();
    checkCoding(bytes, room, blockCheck);
    checkAnswers(bytes);
    require(packetsIn(bytes, 1, blockCheck) == packetsIn(bytes, bytes.size(), blockCheck),
            "packets do not depend on the pieces they come in");
    std::string decoded;
    static_cast<void>(decodeData(bytes, {'#', '&', '~'}, decoded));
    require(decoded.size() <= 94 * bytes.size(), "a run has its longest length");
}

}  // namespace kalvo
