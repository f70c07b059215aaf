// The packets of the Kermit protocol.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace kalvo {

struct KermitPacket {
    char type = 'N';
    int sequence = 0;  // 0..63
    std::string data = {};
};

// Data and block check of a short packet, and of the longest one asked for: somewhat
// below the 9024 that can be told, which not every peer keeps exactly.
inline constexpr int kShortPacket = 94;
inline constexpr int kLongestPacket = 9000;

inline constexpr int kKermitSequences = 64;

// Long lengths are two digits to this base.
inline constexpr int kKermitBase = 95;

// The packet length for a line: a second of it, so that a disturbed packet does not cost
// more than that.
constexpr int longestPacket(int charactersPerSecond) {
    return std::clamp(charactersPerSecond, kShortPacket, kLongestPacket);
}

// A number 0..94 as the printable character that stands for it, and back.
constexpr char toChar(int number) { return static_cast<char>(number + ' '); }
constexpr int unChar(char character) { return static_cast<unsigned char>(character) - ' '; }

// Mark, length, sequence, type, data, block check 1 (6 bits), 2 (12 bits) or 3 (CRC of
// 16 bits), end of line. A long packet where the data asks for it.
[[nodiscard]] std::string encodePacket(const KermitPacket& packet, int blockCheck, char endOfLine);

// Finds packets in what a line delivers; what lies between them is skipped.
class KermitPacketReader {
public:
    enum class Result { kMore, kPacket, kDamaged };

    void feed(std::string_view bytes) { received_.append(bytes); }
    // The next packet; kMore when it is not there yet, kDamaged once for each start of a
    // packet that did not become one.
    Result next(int blockCheck, KermitPacket& packet);
    void clear() { received_.clear(); }

private:
    std::string received_;
};

}  // namespace kalvo
