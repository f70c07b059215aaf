#include "transfer/kermit/kermit_receiver.h"

#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::string_view kNotStored = "Cannot store file";

}  // namespace

TransferCode KermitReceiver::accept(const KermitPacket& initiation, const KermitParameters& ours) {
    const KermitParameters theirs = parseParameters(initiation.data);
    const KermitParameters answer = answerTo(ours, theirs);
    const TransferCode code = link_.answer({'Y', initiation.sequence, encodeParameters(answer)});
    agreement_ = link_.settle(answer, theirs);
    return code;
}

TransferCode KermitReceiver::step() {
    for (;;) {
        KermitPacket packet;
        TransferCode code = link_.awaitNext(packet);
        if (code != TransferCode::kSuccess) return code;
        code = take(packet);
        // These two are no step of their own.
        const bool onTheWay = packet.type == 'A' || packet.type == 'Z';
        if (!onTheWay || code != TransferCode::kUnsuccessfulOrMore) return code;
    }
}

TransferCode KermitReceiver::take(const KermitPacket& packet) {
    switch (packet.type) {
        case 'A': return confirm(packet, "Y");
        case 'F':
        case 'X': return takeHeader(packet);
        case 'D': return takeData(packet);
        case 'Z': return takeEnd(packet);
        case 'B': return takeBreak(packet);
        default: return giveUp(TransferCode::kUnknownResponse, "Unknown packet");
    }
}

TransferCode KermitReceiver::takeHeader(const KermitPacket& packet) {
    std::string name;
    if (inside_ || !decodeData(packet.data, agreement_.receiving, name))
        return giveUp(TransferCode::kUnknownResponse, "Data expected");
    try {
        sink_.begin(name);
    } catch (const RuntimeError&) {
        return giveUp(TransferCode::kFileOpenError, kNotStored);
    }
    inside_ = true;
    return confirm(packet);
}

TransferCode KermitReceiver::takeData(const KermitPacket& packet) {
    std::string content;
    if (!inside_ || !decodeData(packet.data, agreement_.receiving, content))
        return giveUp(TransferCode::kUnknownResponse, "Bad data");
    // Answered first: the peer prepares its next packet meanwhile.
    const TransferCode code = confirm(packet);
    if (code != TransferCode::kUnsuccessfulOrMore) return code;
    try {
        sink_.write(content);
    } catch (const RuntimeError&) {
        return giveUp(TransferCode::kFileOpenError, kNotStored);
    }
    progress_.bytes += content.size();
    ++progress_.packets;
    return code;
}

TransferCode KermitReceiver::takeEnd(const KermitPacket& packet) {
    if (!inside_) return giveUp(TransferCode::kUnknownResponse, "File expected");
    discarded_ = packet.data == "D";
    try {
        sink_.end(!discarded_);
    } catch (const RuntimeError&) {
        return giveUp(TransferCode::kFileOpenError, kNotStored);
    }
    inside_ = false;
    return confirm(packet);
}

TransferCode KermitReceiver::takeBreak(const KermitPacket& packet) {
    if (inside_) return giveUp(TransferCode::kUnknownResponse, "Data expected");
    const TransferCode code = confirm(packet);
    if (code != TransferCode::kUnsuccessfulOrMore) return code;
    return discarded_ ? TransferCode::kUserBreak : TransferCode::kSuccess;
}

TransferCode KermitReceiver::confirm(const KermitPacket& packet, const char* text) {
    const TransferCode code = link_.answer({'Y', packet.sequence, text});
    return code == TransferCode::kSuccess ? TransferCode::kUnsuccessfulOrMore : code;
}

TransferCode KermitReceiver::giveUp(TransferCode code, std::string_view reason) {
    link_.abandon(reason);
    return code;
}

}  // namespace kalvo
