// A line behind a serial device server in the network.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/asio/line_stream.h"

namespace kalvo {

struct LineServer {
    std::string host;
    std::string port;
    bool controlled = false;  // RFC 2217: its settings can be set
};

// Nothing for a path that is no "tcp://HOST:PORT" or "rfc2217://HOST:PORT"; an IPv6 address
// stands in square brackets.
[[nodiscard]] std::optional<LineServer> serverOf(const std::string& path);

// Connects within a second and a half. RuntimeError 8002 when nobody answers.
[[nodiscard]] std::unique_ptr<LineStream> openTcpStream(asio::io_context& io,
                                                        const LineServer& server,
                                                        const LineSettings& settings,
                                                        Handshaking handshaking);

}  // namespace kalvo
