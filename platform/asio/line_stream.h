// The bytes of one open line, whatever carries them.
#pragma once

#include <asio/buffer.hpp>
#include <asio/error_code.hpp>
#include <asio/io_context.hpp>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/asio/native_line.h"

namespace kalvo {

// Open from construction to close(). Reads and writes are started by the one thread that
// runs the context; each direction has one on its way at most.
class LineStream {
public:
    using Handler = std::function<void(const asio::error_code& error, std::size_t size)>;

    virtual ~LineStream() = default;

    // `done` gets what has come; an error means that the line is lost.
    virtual void asyncRead(asio::mutable_buffer buffer, Handler done) = 0;
    // Sends all of the bytes, which must live until then.
    virtual void asyncWrite(asio::const_buffer bytes, Handler done) = 0;

    // RuntimeError 380 for settings the line cannot do; it then keeps those it had.
    virtual void configure(const LineSettings& settings, Handshaking handshaking) = 0;

    // Whether bytes still have to leave this machine.
    [[nodiscard]] virtual bool hasUnsentOutput() noexcept = 0;
    // Whether changes() tells anything.
    [[nodiscard]] virtual bool tellsChanges() const noexcept { return false; }
    [[nodiscard]] virtual LineMonitor::Changes changes() noexcept { return {}; }
    // As they are now; nothing on lines that have none.
    [[nodiscard]] virtual std::optional<ModemLines> modemLines() const noexcept { return {}; }

    // Drops what waits in either direction; the handlers of what is on its way get an error.
    virtual void close() noexcept = 0;
};

// Opens what a path names: a device, "tcp://HOST:PORT" (the bytes of a serial device server as
// they are) or "rfc2217://HOST:PORT" (its speed, format and flow control, too). RuntimeErrors as
// openNativeLine.
[[nodiscard]] std::unique_ptr<LineStream> openLineStream(asio::io_context& io,
                                                         const std::string& path,
                                                         const LineSettings& settings,
                                                         Handshaking handshaking);

}  // namespace kalvo
