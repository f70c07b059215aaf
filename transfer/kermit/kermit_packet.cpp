#include "transfer/kermit/kermit_packet.h"

#include <array>
#include <cstdint>

namespace kalvo {

namespace {

constexpr char kMark = '\x01';
constexpr std::size_t kLongHeader = 7;  // mark, blank, sequence, type, two digits, check

constexpr std::array<std::uint16_t, 256> makeCrcTable() {
    std::array<std::uint16_t, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        unsigned crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0x8408U : 0U);
        table[byte] = static_cast<std::uint16_t>(crc);
    }
    return table;
}
constexpr auto kCrcTable = makeCrcTable();

unsigned sumOf(std::string_view bytes) {
    unsigned sum = 0;
    for (const char byte : bytes) sum += static_cast<unsigned char>(byte);
    return sum;
}

unsigned crcOf(std::string_view bytes) {
    unsigned crc = 0;
    for (const char byte : bytes)
        crc = (crc >> 8U) ^ kCrcTable[(crc ^ static_cast<unsigned char>(byte)) & 0xFFU];
    return crc;
}

char sixBits(unsigned value) { return toChar(static_cast<int>(value & 0x3FU)); }

std::string checkOf(std::string_view bytes, int blockCheck) {
    if (blockCheck == 3) {
        const unsigned crc = crcOf(bytes);
        return {sixBits(crc >> 12U), sixBits(crc >> 6U), sixBits(crc)};
    }
    const unsigned sum = sumOf(bytes);
    if (blockCheck == 2) return {sixBits(sum >> 6U), sixBits(sum)};
    return {sixBits(sum + ((sum & 0xC0U) >> 6U))};
}

// Where the data of a packet starts, and where the packet ends, both counted from its
// mark; end 0 while that is not known, data 0 when the header makes no sense.
struct Extent {
    std::size_t data = 0;
    std::size_t end = 0;
};

Extent extentOf(std::string_view bytes) {
    if (bytes.size() < 2) return {1, 0};
    const int length = unChar(bytes[1]);
    // Some peers go one beyond the limit: what can be read is read.
    if (length >= 3 && length <= kShortPacket + 1) return {4, static_cast<std::size_t>(length) + 2};
    if (length != 0) return {};
    if (bytes.size() < kLongHeader) return {1, 0};
    const int high = unChar(bytes[4]);
    const int low = unChar(bytes[5]);
    if (checkOf(bytes.substr(1, 5), 1)[0] != bytes[6] || high < 0 || high > kKermitBase ||
        low < 0 || low > kKermitBase)
        return {};
    return {kLongHeader, kLongHeader + static_cast<std::size_t>(high * kKermitBase + low)};
}

bool readWhole(std::string_view bytes, std::size_t dataAt, int blockCheck, KermitPacket& packet) {
    const auto checkSize = static_cast<std::size_t>(blockCheck);
    const int sequence = unChar(bytes[2]);
    if (bytes.size() < dataAt + checkSize || sequence < 0 || sequence > 63) return false;
    const std::size_t checkAt = bytes.size() - checkSize;
    if (checkOf(bytes.substr(1, checkAt - 1), blockCheck) != bytes.substr(checkAt)) return false;
    packet.type = bytes[3];
    packet.sequence = sequence;
    packet.data.assign(bytes.substr(dataAt, checkAt - dataAt));
    return true;
}

}  // namespace

std::string encodePacket(const KermitPacket& packet, int blockCheck, char endOfLine) {
    const int body = static_cast<int>(packet.data.size()) + blockCheck;
    const bool isLong = body + 2 > kShortPacket;
    std::string bytes = {kMark, toChar(isLong ? 0 : body + 2), toChar(packet.sequence),
                         packet.type};
    if (isLong) {
        bytes += {toChar(body / kKermitBase), toChar(body % kKermitBase)};
        bytes += checkOf(std::string_view(bytes).substr(1), 1);
    }
    bytes += packet.data;
    bytes += checkOf(std::string_view(bytes).substr(1), blockCheck);
    bytes.push_back(endOfLine);
    return bytes;
}

KermitPacketReader::Result KermitPacketReader::next(int blockCheck, KermitPacket& packet) {
    received_.erase(0, received_.find(kMark));
    if (received_.empty()) return Result::kMore;
    const Extent extent = extentOf(received_);
    const std::size_t inside = std::string_view(received_).substr(0, extent.end).find(kMark, 1);
    if (extent.data == 0 || inside != std::string::npos) {
        received_.erase(0, 1);
        return Result::kDamaged;
    }
    if (extent.end == 0 || received_.size() < extent.end) return Result::kMore;
    const auto bytes = std::string_view(received_).substr(0, extent.end);
    // The peer may not know the negotiated check yet, or any more.
    const bool whole =
        readWhole(bytes, extent.data, blockCheck, packet) ||
        (readWhole(bytes, extent.data, 1, packet) && packet.type != 'D' && packet.type != 'F');
    received_.erase(0, whole ? extent.end : 1);
    return whole ? Result::kPacket : Result::kDamaged;
}

}  // namespace kalvo
