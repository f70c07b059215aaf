// Taking what a Kermit peer sends: a file, or a text.
#pragma once

#include <string>
#include <string_view>

#include "transfer/kermit/kermit_link.h"

namespace kalvo {

// Where received bytes go. A RuntimeError of any of these ends the transfer.
class KermitSink {
public:
    virtual ~KermitSink() = default;
    // A file of this name, or a text, follows.
    virtual void begin(const std::string& name) = 0;
    virtual void write(std::string_view bytes) = 0;
    // It is whole, or the peer wants it thrown away.
    virtual void end(bool whole) = 0;
};

class KermitReceiver {
public:
    KermitReceiver(KermitLink& link, KermitSink& sink) : link_(link), sink_(sink) {}

    // Takes the packet with which the peer begins to send; `ours` is what we can.
    TransferCode accept(const KermitPacket& initiation, const KermitParameters& ours);

    // Takes the next packet, header or data: kUnsuccessfulOrMore when others follow,
    // kSuccess once the peer has ended, kUserBreak when it has thrown away what it sent.
    // Any other code ends the transfer, and the peer knows: those of the link,
    // kUnknownResponse for what makes no sense, kFileOpenError for a sink that fails.
    TransferCode step();

    [[nodiscard]] KermitProgress progress() const { return progress_; }

private:
    TransferCode take(const KermitPacket& packet);
    TransferCode takeHeader(const KermitPacket& packet);
    TransferCode takeData(const KermitPacket& packet);
    TransferCode takeEnd(const KermitPacket& packet);
    TransferCode takeBreak(const KermitPacket& packet);
    TransferCode confirm(const KermitPacket& packet, const char* text = "");
    TransferCode giveUp(TransferCode code, std::string_view reason);

    KermitLink& link_;
    KermitSink& sink_;
    KermitAgreement agreement_;
    KermitProgress progress_;
    bool inside_ = false;  // between a header and its end
    bool discarded_ = false;
};

}  // namespace kalvo
