#include "transfer/kermit/kermit_coding.h"

#include <algorithm>
#include <array>

#include "transfer/kermit/kermit_packet.h"

namespace kalvo {

namespace {

constexpr unsigned kEighthBit = 0x80;
constexpr unsigned kControlBit = 0x40;
constexpr std::size_t kLongestRun = 94;
constexpr std::size_t kShortestRun = 4;
constexpr std::size_t kLongestCode = 5;  // of one byte or run
constexpr int kShortestPacket = 20;      // taken for the least a peer can mean
constexpr int kLongPackets = 2;
constexpr int kAttributes = 8;
constexpr int kMoreCapabilities = 1;

unsigned code(char character) { return static_cast<unsigned char>(character); }

bool isControl(unsigned seven) { return seven < ' ' || seven == 0x7F; }

bool isPrefix(char character) {
    return (character > ' ' && character < '?') || (character > '_' && character < '\x7F');
}

// One byte in at most three characters; how many.
std::size_t encodeByte(unsigned byte, const KermitPrefixes& prefixes, char* to) {
    std::size_t size = 0;
    if (prefixes.eighthBit != 0 && (byte & kEighthBit) != 0) {
        to[size++] = prefixes.eighthBit;
        byte &= ~kEighthBit;
    }
    const unsigned seven = byte & ~kEighthBit;
    if (isControl(seven)) {
        to[size++] = prefixes.control;
        byte ^= kControlBit;
    } else if (seven == code(prefixes.control) || seven == code(prefixes.eighthBit) ||
               seven == code(prefixes.repeat)) {
        to[size++] = prefixes.control;
    }
    to[size++] = static_cast<char>(byte);
    return size;
}

std::size_t runLength(std::string_view bytes) {
    std::size_t length = 1;
    while (length < std::min(bytes.size(), kLongestRun) && bytes[length] == bytes[0]) ++length;
    return length;
}

}  // namespace

std::size_t encodeData(std::string_view bytes, const KermitPrefixes& prefixes, std::size_t room,
                       std::string& data) {
    std::size_t done = 0;
    const std::size_t limit = data.size() + room;
    while (done < bytes.size()) {
        std::array<char, kLongestCode> coded{};
        std::size_t size = 0;
        std::size_t run = 1;
        if (prefixes.repeat != 0) run = runLength(bytes.substr(done));
        if (run >= kShortestRun) {
            coded[size++] = prefixes.repeat;
            coded[size++] = toChar(static_cast<int>(run));
        } else {
            run = 1;
        }
        size += encodeByte(code(bytes[done]), prefixes, coded.data() + size);
        if (data.size() + size > limit) break;
        data.append(coded.data(), size);
        done += run;
    }
    return done;
}

std::string encodeWhole(std::string_view text, const KermitPrefixes& prefixes) {
    std::string data;
    encodeData(text, prefixes, kLongestCode * text.size(), data);
    return data;
}

bool decodeData(std::string_view data, const KermitPrefixes& prefixes, std::string& bytes) {
    for (std::size_t at = 0; at < data.size(); ++at) {
        std::size_t count = 1;
        unsigned eighth = 0;
        if (prefixes.repeat != 0 && data[at] == prefixes.repeat) {
            if (at + 2 >= data.size()) return false;
            const int run = unChar(data[at + 1]);
            if (run < 0 || run > static_cast<int>(kLongestRun)) return false;
            count = static_cast<std::size_t>(run);
            at += 2;
        }
        if (prefixes.eighthBit != 0 && data[at] == prefixes.eighthBit) {
            if (++at >= data.size()) return false;
            eighth = kEighthBit;
        }
        unsigned byte = code(data[at]);
        if (data[at] == prefixes.control) {
            if (++at >= data.size()) return false;
            byte = code(data[at]);
            const unsigned seven = byte & ~kEighthBit;
            if (seven >= '?' && seven <= '_') byte ^= kControlBit;
        }
        bytes.append(count, static_cast<char>(byte | eighth));
    }
    return true;
}

KermitParameters fullParameters(int charactersPerSecond) {
    KermitParameters parameters;
    parameters.packetLength = longestPacket(charactersPerSecond);
    parameters.blockCheck = 3;
    parameters.repeat = '~';
    parameters.attributes = true;
    return parameters;
}

std::string encodeParameters(const KermitParameters& parameters) {
    const int longLength = parameters.packetLength;
    const int capabilities = kLongPackets | (parameters.attributes ? kAttributes : 0);
    return {toChar(std::min(longLength, kShortPacket)),
            toChar(parameters.timeOut),
            toChar(parameters.padding),
            static_cast<char>(code(parameters.paddingCharacter) ^ kControlBit),
            toChar(parameters.endOfLine),
            parameters.control,
            parameters.eighthBit,
            static_cast<char>('0' + parameters.blockCheck),
            parameters.repeat,
            toChar(capabilities),
            toChar(0),  // no window: one packet at a time
            toChar(longLength / kKermitBase),
            toChar(longLength % kKermitBase)};
}

KermitParameters parseParameters(std::string_view data) {
    KermitParameters parameters;
    const auto numberAt = [&](std::size_t at, int absent) {
        const int number = at < data.size() ? unChar(data[at]) : absent;
        return number >= 0 && number <= kShortPacket ? number : absent;
    };
    const auto characterAt = [&](std::size_t at, char absent) {
        return at < data.size() ? data[at] : absent;
    };
    parameters.packetLength = std::max(numberAt(0, parameters.packetLength), kShortestPacket);
    parameters.timeOut = numberAt(1, parameters.timeOut);
    parameters.padding = numberAt(2, 0);
    parameters.paddingCharacter = static_cast<char>(code(characterAt(3, '@')) ^ kControlBit);
    parameters.endOfLine = static_cast<char>(numberAt(4, '\r'));
    parameters.control = characterAt(5, '#');
    parameters.eighthBit = characterAt(6, 'N');
    const char check = characterAt(7, '1');
    parameters.blockCheck = check >= '1' && check <= '3' ? check - '0' : 1;
    parameters.repeat = characterAt(8, ' ');
    const int capabilities = numberAt(9, 0);
    parameters.attributes = (capabilities & kAttributes) != 0;
    std::size_t at = 9;
    while ((numberAt(at, 0) & kMoreCapabilities) != 0) ++at;
    if ((capabilities & kLongPackets) != 0) {
        const int length = numberAt(at + 2, 0) * kKermitBase + numberAt(at + 3, 0);
        if (length == 0)
            parameters.packetLength = 500;
        else if (length >= kShortestPacket)
            parameters.packetLength = std::min(length, kLongestPacket);
    }
    return parameters;
}

KermitAgreement agree(const KermitParameters& ours, const KermitParameters& theirs) {
    KermitAgreement agreement;
    agreement.blockCheck = ours.blockCheck == theirs.blockCheck ? ours.blockCheck : 1;
    // A prefix that means two things could not be undone.
    const auto usable = [&](char prefix, char other) {
        return isPrefix(prefix) && prefix != ours.control && prefix != theirs.control &&
               prefix != other;
    };
    char eighthBit = 0;
    if (usable(theirs.eighthBit, 0) && ours.eighthBit != 'N') eighthBit = theirs.eighthBit;
    if (usable(ours.eighthBit, 0) && theirs.eighthBit != 'N') eighthBit = ours.eighthBit;
    const char repeat =
        usable(ours.repeat, eighthBit) && ours.repeat == theirs.repeat ? ours.repeat : '\0';
    agreement.sending = {ours.control, eighthBit, repeat};
    agreement.receiving = {theirs.control, eighthBit, repeat};
    return agreement;
}

KermitParameters answerTo(KermitParameters ours, const KermitParameters& theirs) {
    ours.blockCheck = theirs.blockCheck;
    ours.repeat = isPrefix(theirs.repeat) ? theirs.repeat : ' ';
    if (isPrefix(theirs.eighthBit)) ours.eighthBit = theirs.eighthBit;
    return ours;
}

}  // namespace kalvo
