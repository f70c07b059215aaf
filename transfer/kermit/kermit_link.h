// Packets to and from a Kermit peer, asked for again until they arrive.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/multidll.h"
#include "platform/transfer_line.h"
#include "transfer/kermit/kermit_coding.h"
#include "transfer/kermit/kermit_packet.h"

namespace kalvo {

// How patient the link is; milliseconds.
struct KermitPatience {
    int timeOut = 5000;    // of the peer's silence before it is asked again
    int nakDelay = 0;      // after a damaged packet, before it is asked for again
    int breakDelay = 100;  // between two looks at the user's wish to break off
    int attempts = 5;      // at one packet
};

// How much content has gone through.
struct KermitProgress {
    std::uint64_t bytes = 0;
    std::int32_t packets = 0;
};

// The codes of the calls below: kSuccess; kUserBreak, of the user (the peer is told) or
// of the peer; when the attempts are used up, by what happened last: kTimeOut, kNak,
// kBlockCheckError; kTimeOut also for a line that is lost.
class KermitLink {
public:
    KermitLink(TransferLine& line, std::function<bool()> breakRequested)
        : line_(line), breakRequested_(std::move(breakRequested)) {}

    void setPatience(const KermitPatience& patience) { patience_ = patience; }
    // Characters a second: what a long packet takes is waited for besides.
    void setPace(int charactersPerSecond) { pace_ = charactersPerSecond; }
    // Begins a dialogue: forgets the last one and what is left of it on the line, and
    // says who we are. A peer that is still in the last one is told to end it.
    TransferCode greet(const KermitPacket& greeting);
    // From here on the dialogue keeps to what both sides can.
    KermitAgreement settle(const KermitParameters& ours, const KermitParameters& theirs);

    // Sends a packet until its answer is there: one of the same sequence number and
    // of a type in `answers`. `meanwhile` is done while the packet is on its way.
    TransferCode request(const KermitPacket& packet, std::string_view answers, KermitPacket& answer,
                         const std::function<void()>& meanwhile = {});
    // Sends the answer to a packet of the peer.
    TransferCode answer(const KermitPacket& packet);
    // The packet that follows the one answered last.
    TransferCode awaitNext(KermitPacket& next);
    // For the serving side: the command that begins the next dialogue, however long
    // that takes.
    TransferCode awaitCommand(KermitPacket& command);
    // Tells the peer why the dialogue ends here; no answer is waited for.
    void abandon(std::string_view reason);

    // Whether the last code came from an error packet of the peer.
    [[nodiscard]] bool peerBrokeOff() const { return peerBrokeOff_; }

private:
    enum class Event { kPacket, kDamaged, kSilence, kBreak, kLost };

    void start();
    void letPass(int milliseconds);
    Event receive(KermitPacket& packet);
    [[nodiscard]] std::string encoded(const KermitPacket& packet) const;
    TransferCode send(const KermitPacket& packet) { return writeAll(encoded(packet)); }
    TransferCode writeAll(std::string_view bytes);
    TransferCode end(Event event);
    TransferCode askAgain(int sequence);
    [[nodiscard]] std::int64_t deadline() const;

    TransferLine& line_;
    std::function<bool()> breakRequested_;
    KermitPatience patience_;
    int pace_ = 960;
    int longest_ = kShortPacket;  // of the packets that may be under way
    std::int64_t quietUntil_ = 0;
    int blockCheck_ = 1;
    KermitParameters peer_;
    KermitPacketReader reader_;
    int answered_ = 0;        // sequence number of the last answer
    std::string lastAnswer_;  // as sent: what was agreed on since does not count for it
    bool peerBrokeOff_ = false;
};

}  // namespace kalvo
