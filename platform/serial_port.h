// The serial control: one port, its settings, its buffers and its receive event.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kalvo {

// Values of CommEvent.
namespace comm_event {
inline constexpr int kSend = 1;
inline constexpr int kReceive = 2;
inline constexpr int kCts = 3;
inline constexpr int kBreak = 1001;
inline constexpr int kReceiveOverflow = 1008;
inline constexpr int kSendFull = 1010;
inline constexpr int kLineLost = 1100;
}  // namespace comm_event

// Handshaking modes, the encoding of the stored flow control.
enum class Handshaking { kNone = 0, kXonXoff = 1, kRtsCts = 2, kRtsAndXon = 3 };

// What the device at the other end says on lines of its own.
struct ModemLines {
    bool cts = false;   // it may be sent to
    bool dsr = false;   // it is there
    bool dcd = false;   // it has a carrier
    bool ring = false;  // it is called

    bool operator==(const ModemLines&) const = default;
};

// The serial port of the run. All members are called from the program's thread;
// the line itself is drained by the binding at any speed, so that nothing is lost
// while the program sleeps or types.
//
// Failures are RuntimeErrors: 8002 port number not there, 8005 already open (by
// this or another program), 8018 not open, 380 settings refused, 8012 line error.
class SerialPort {
public:
    virtual ~SerialPort() = default;

    // 1-based port number; 8005 while open, 8002 outside 1..256.
    virtual void setCommPort(int number) = 0;
    [[nodiscard]] virtual int CommPort() const = 0;

    // "9600,N,8,1": speed in bit/s, parity letter N E O M S, data bits 4..8, stop
    // bits 1, 1.5 or 2. Takes effect at once when the port is open. 380 when the
    // text is not of this form or the line cannot do it.
    virtual void setSettings(std::string_view settings) = 0;
    virtual void setHandshaking(Handshaking mode) = 0;

    // Characters that must be waiting for a receive event; 0: no events.
    virtual void setRThreshold(int characters) = 0;
    // Characters left in the send buffer for a send event; 0: no events.
    virtual void setSThreshold(int characters) = 0;
    // 0: text, the only mode used.
    virtual void setInputMode(int mode) = 0;
    // Characters one Input() takes; 0: everything that is waiting.
    virtual void setInputLen(int characters) = 0;

    // Takes received bytes, one to one; empty when none wait. 8018 when closed.
    virtual std::string Input() = 0;
    // Queues bytes for sending and returns; 8018 when closed.
    virtual void Output(std::string_view bytes) = 0;
    // Received bytes waiting. 0 when closed.
    [[nodiscard]] virtual std::size_t InBufferCount() const = 0;

    // Opening and closing both drop what is waiting in either direction.
    virtual void setPortOpen(bool open) = 0;
    // Opens a port whose device may be away or busy, be it for a moment: such a one counts as
    // lost. The port is open, and the line is tried until it is there.
    virtual void reopen() = 0;
    [[nodiscard]] virtual bool PortOpen() const = 0;

    // The kind of the latest communication event (comm_event).
    [[nodiscard]] virtual int CommEvent() const = 0;

    // At most some tenths of a second old; nothing where the line has none, or is not open.
    [[nodiscard]] virtual std::optional<ModemLines> modemLines() const { return std::nullopt; }

    // The receive event OnComm. Delivered on the program's thread from the event
    // pump, never from inside another member. Events that arrive while one is
    // waiting for delivery become one.
    virtual void onComm(std::function<void()> handler) = 0;

    // Called with whatever comes in before it can be read, from a thread of the binding,
    // in the order of arrival. Set while the port is closed; empty: nobody listens.
    virtual void onInput(std::function<void(std::string_view bytes)> listener) = 0;

    // Called on the program's thread before the port is opened, and when it has been closed:
    // then with the number of bytes that had come in and were dropped unread.
    virtual void onOpening(std::function<void()> handler) = 0;
    virtual void onClosed(std::function<void(std::size_t unread)> handler) = 0;

    // The device that is open, or was to be opened last, as the user knows it (code page
    // 1252); empty when there was none.
    [[nodiscard]] virtual std::string deviceName() const = 0;
    // What keeps a port number meaning the device it means now (PortDevice::identity).
    [[nodiscard]] virtual std::string identity(int number) const = 0;

    // Called once, from the event pump, each time the line is lost (device
    // unplugged) or is back and open again. `lost` tells which.
    virtual void onLineChange(std::function<void(bool lost)> handler) = 0;
};

}  // namespace kalvo
