#include "transfer/kermit/kermit_link.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Servers throw away what they receive while they get ready for the next command. One
// that takes longer misses a greeting, which is repeated.
constexpr int kQuiet = 40;
constexpr int kGreetingTime = 1000;

// These are exchanged before, or whatever, the two sides have agreed on.
bool hasSimpleCheck(char type) { return type == 'S' || type == 'I' || type == 'R' || type == 'G'; }

bool contains(std::string_view types, char type) {
    return types.find(type) != std::string_view::npos;
}

}  // namespace

void KermitLink::start() {
    blockCheck_ = 1;
    peer_ = {};
    longest_ = kShortPacket;
    answered_ = 0;
    lastAnswer_.clear();
    try {
        letPass(static_cast<int>(quietUntil_ - line_.now()));
    } catch (const RuntimeError&) {
        // A lost line shows at the first packet.
    }
}

void KermitLink::letPass(int milliseconds) {
    std::array<char, 4096> rest{};
    const std::int64_t until = line_.now() + milliseconds;
    while (line_.now() < until)
        static_cast<void>(line_.read(rest, static_cast<int>(until - line_.now())));
    line_.flushInput();
    reader_.clear();
}

TransferCode KermitLink::greet(const KermitPacket& greeting) {
    // Short and often: servers drop what comes while they end the transfer before.
    KermitPatience patience = patience_;
    std::swap(patience, patience_);
    patience_.timeOut = std::min(patience_.timeOut, kGreetingTime);
    patience_.attempts = 1;
    TransferCode code = TransferCode::kTimeOut;
    for (int attempt = 0; attempt < 2 * patience.attempts && code != TransferCode::kSuccess;
         ++attempt) {
        start();
        KermitPacket answer;
        code = request(greeting, "Y", answer);
        if (code == TransferCode::kUserBreak) {
            // A server that does not know the greeting has answered all the same.
            if (peerBrokeOff_) code = TransferCode::kSuccess;
            break;
        }
    }
    std::swap(patience, patience_);
    return code;
}

KermitAgreement KermitLink::settle(const KermitParameters& ours, const KermitParameters& theirs) {
    const KermitAgreement agreement = agree(ours, theirs);
    blockCheck_ = agreement.blockCheck;
    peer_ = theirs;
    longest_ = longestPacket(pace_);
    return agreement;
}

TransferCode KermitLink::request(const KermitPacket& packet, std::string_view answers,
                                 KermitPacket& answer, const std::function<void()>& meanwhile) {
    const bool command = packet.type == 'R' || packet.type == 'G';
    TransferCode fault = send(packet);
    if (fault != TransferCode::kSuccess) return fault;
    if (meanwhile) meanwhile();
    for (int attempt = 1;;) {
        const Event event = receive(answer);
        if (event == Event::kPacket) {
            if (answer.type == 'E') return end(event);
            const bool nak = answer.type == 'N';
            // The peer asks for the packet after this one: it has this one.
            const bool nakOfNext = nak && contains(answers, 'Y') && packet.type != 'S' &&
                                   answer.sequence == (packet.sequence + 1) % kKermitSequences;
            if (nakOfNext) answer = {'Y', packet.sequence, ""};
            if (answer.sequence != packet.sequence) continue;
            if (contains(answers, answer.type)) return TransferCode::kSuccess;
            if (!nak) continue;
            fault = TransferCode::kNak;
        } else if (event == Event::kBreak || event == Event::kLost) {
            return end(event);
        } else {
            fault = end(event);
        }
        if (++attempt > patience_.attempts) {
            abandon("Too many retries");
            return fault;
        }
        // A damaged answer to a command is the peer's own packet: it is asked for.
        const TransferCode sent =
            command && event == Event::kDamaged ? askAgain(packet.sequence) : send(packet);
        if (sent != TransferCode::kSuccess) return sent;
    }
}

TransferCode KermitLink::answer(const KermitPacket& packet) {
    answered_ = packet.sequence;
    lastAnswer_ = encoded(packet);
    return writeAll(lastAnswer_);
}

TransferCode KermitLink::awaitNext(KermitPacket& next) {
    const int expected = (answered_ + 1) % kKermitSequences;
    for (int attempt = 1;;) {
        const Event event = receive(next);
        TransferCode fault = TransferCode::kSuccess;
        TransferCode sent = TransferCode::kSuccess;
        if (event == Event::kPacket) {
            if (next.type == 'E') return end(event);
            if (contains("YN", next.type)) continue;
            if (next.sequence == expected) return TransferCode::kSuccess;
            if (next.sequence != answered_) continue;
            fault = TransferCode::kUnknownResponse;
            if (attempt < patience_.attempts) sent = writeAll(lastAnswer_);  // the peer missed it
        } else if (event == Event::kBreak || event == Event::kLost) {
            return end(event);
        } else {
            fault = end(event);
            if (attempt < patience_.attempts) sent = askAgain(expected);
        }
        if (sent != TransferCode::kSuccess) return sent;
        if (++attempt > patience_.attempts) {
            abandon("Too many retries");
            return fault;
        }
    }
}

TransferCode KermitLink::awaitCommand(KermitPacket& command) {
    for (;;) {
        const Event event = receive(command);
        if (event == Event::kBreak || event == Event::kLost) return end(event);
        if (event != Event::kPacket || contains("YNE", command.type)) continue;
        if (command.type == 'B' && command.sequence == answered_) {
            // The answer that ended the last dialogue was lost.
            const TransferCode sent = writeAll(lastAnswer_);
            if (sent != TransferCode::kSuccess) return sent;
            continue;
        }
        if (command.sequence != 0) continue;
        blockCheck_ = 1;
        peer_ = {};
        longest_ = kShortPacket;
        return TransferCode::kSuccess;
    }
}

TransferCode KermitLink::askAgain(int sequence) {
    try {
        if (patience_.nakDelay > 0) letPass(patience_.nakDelay);
    } catch (const RuntimeError&) {
        return TransferCode::kTimeOut;
    }
    return send({'N', sequence, ""});
}

TransferCode KermitLink::end(Event event) {
    peerBrokeOff_ = event == Event::kPacket;
    switch (event) {
        case Event::kDamaged: return TransferCode::kBlockCheckError;
        case Event::kSilence:
        case Event::kLost: return TransferCode::kTimeOut;
        case Event::kPacket:
        case Event::kBreak: break;
    }
    if (event == Event::kBreak) abandon("User break");
    return TransferCode::kUserBreak;
}

KermitLink::Event KermitLink::receive(KermitPacket& packet) {
    std::array<char, 4096> buffer{};
    const std::int64_t until = deadline();
    try {
        if (breakRequested_()) return Event::kBreak;
        for (;;) {
            switch (reader_.next(blockCheck_, packet)) {
                case KermitPacketReader::Result::kPacket: return Event::kPacket;
                case KermitPacketReader::Result::kDamaged: return Event::kDamaged;
                case KermitPacketReader::Result::kMore: break;
            }
            const std::int64_t left = until - line_.now();
            if (left <= 0) return Event::kSilence;
            const auto slice = std::min<std::int64_t>(left, patience_.breakDelay);
            const std::size_t got = line_.read(buffer, static_cast<int>(slice));
            reader_.feed({buffer.data(), got});
            if (got == 0 && breakRequested_()) return Event::kBreak;
        }
    } catch (const RuntimeError&) {
        return Event::kLost;
    }
}

std::string KermitLink::encoded(const KermitPacket& packet) const {
    const int blockCheck = hasSimpleCheck(packet.type) ? 1 : blockCheck_;
    return std::string(static_cast<std::size_t>(peer_.padding), peer_.paddingCharacter) +
           encodePacket(packet, blockCheck, peer_.endOfLine);
}

TransferCode KermitLink::writeAll(std::string_view bytes) {
    const std::int64_t until = deadline();
    try {
        while (!bytes.empty()) {
            const std::size_t taken = line_.write(bytes, patience_.breakDelay);
            bytes.remove_prefix(taken);
            if (taken > 0) continue;
            if (line_.now() >= until) return TransferCode::kTimeOut;
            if (breakRequested_()) return TransferCode::kUserBreak;
        }
    } catch (const RuntimeError&) {
        return TransferCode::kTimeOut;
    }
    quietUntil_ = line_.now() + kQuiet;
    return TransferCode::kSuccess;
}

void KermitLink::abandon(std::string_view reason) {
    static_cast<void>(send({'E', (answered_ + 1) % kKermitSequences, std::string(reason)}));
}

// Both a packet of ours that is still leaving and one of the peer's take their time.
std::int64_t KermitLink::deadline() const {
    return line_.now() + patience_.timeOut + std::int64_t{2000} * longest_ / pace_;
}

}  // namespace kalvo
