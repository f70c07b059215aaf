#include "platform/asio/tcp_stream.h"

#include <array>
#include <asio/connect.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <chrono>
#include <cstring>
#include <deque>
#include <utility>

#include "platform/asio/com_port_control.h"
#include "platform/asio/host_lookup.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

using asio::ip::tcp;

// Whoever closes the port meanwhile waits for both.
constexpr std::chrono::milliseconds kTimeToLookUp{500};
constexpr std::chrono::milliseconds kTimeToConnect{900};
// A server that never stops sending is not read to its end.
constexpr int kMostReads = 64;

[[noreturn]] void failToConnect(const LineServer& server, const asio::error_code& error) {
    const bool late = !error || error == asio::error::operation_aborted;
    throw RuntimeError(error_number::kPortInvalid,
                       fromUtf8(server.host + ":" + server.port) +
                           std::string(" : serveur de ports injoignable, "_ansi) +
                           (late ? std::string("pas de réponse"_ansi) : fromUtf8(error.message())));
}

// A peer that is gone without a word is found within half a minute.
void watchPeer(tcp::socket& socket) {
    asio::error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    socket.set_option(asio::socket_base::keep_alive(true), ignored);
#if defined(TCP_KEEPIDLE) && defined(TCP_KEEPINTVL) && defined(TCP_KEEPCNT)
    using asio::detail::socket_option::integer;
    socket.set_option(integer<IPPROTO_TCP, TCP_KEEPIDLE>(10), ignored);
    socket.set_option(integer<IPPROTO_TCP, TCP_KEEPINTVL>(5), ignored);
    socket.set_option(integer<IPPROTO_TCP, TCP_KEEPCNT>(3), ignored);
#endif
}

// On a context of its own: the caller may be a handler of the line's.
tcp::socket connectTo(asio::io_context& io, const LineServer& server) {
    asio::io_context connecting;
    asio::error_code error = asio::error::operation_aborted;
    const auto host = lookUpHost(server.host, server.port, kTimeToLookUp);
    if (!host || host->error) failToConnect(server, host ? host->error : error);
    tcp::socket socket(connecting);
    asio::async_connect(
        socket, host->places,
        [&](const asio::error_code& result, const tcp::endpoint&) { error = result; });
    connecting.run_for(kTimeToConnect);
    if (error) failToConnect(server, error);
    const auto protocol = socket.local_endpoint().protocol();
    tcp::socket connected(io, protocol, socket.release());
    watchPeer(connected);
    return connected;
}

class TcpStream final : public LineStream {
public:
    TcpStream(tcp::socket socket, std::optional<ComPortControl> control)
        : socket_(std::move(socket)), control_(std::move(control)) {
        if (control_) send(control_->greeting(), nullptr);
    }
    ~TcpStream() override { close(); }
    TcpStream(const TcpStream&) = delete;
    TcpStream& operator=(const TcpStream&) = delete;

    void asyncRead(asio::mutable_buffer buffer, Handler done) override {
        socket_.async_read_some(
            buffer, [this, buffer, done = std::move(done)](const asio::error_code& error,
                                                           std::size_t size) mutable {
                if (error || !control_) return done(error, size);
                const auto received =
                    control_->receive({static_cast<const char*>(buffer.data()), size});
                if (!received.answer.empty()) send(received.answer, nullptr);
                if (received.bytes.empty()) return asyncRead(buffer, std::move(done));
                std::memcpy(buffer.data(), received.bytes.data(), received.bytes.size());
                done(error, received.bytes.size());
            });
    }

    void asyncWrite(asio::const_buffer bytes, Handler done) override {
        const std::string_view text(static_cast<const char*>(bytes.data()), bytes.size());
        send(control_ ? ComPortControl::encode(text) : std::string(text), std::move(done));
    }

    void configure(const LineSettings& settings, Handshaking handshaking) override {
        if (!control_) return;
        const std::string orders = control_->configure(settings, handshaking);
        if (!orders.empty()) send(orders, nullptr);
    }

    [[nodiscard]] bool hasUnsentOutput() noexcept override { return false; }

    // Bytes left unread would take those back that are on their way to the server.
    void close() noexcept override {
        if (!socket_.is_open()) return;
        asio::error_code error;
        socket_.shutdown(tcp::socket::shutdown_send, error);
        socket_.non_blocking(true, error);
        std::array<char, 4096> dropped{};
        for (int reads = 0; reads < kMostReads && !error; ++reads)
            socket_.read_some(asio::buffer(dropped), error);
        socket_.close(error);
    }

private:
    struct Sending {
        std::string bytes;
        Handler done;
    };

    // Answers to the server and bytes of the line go out one after another.
    void send(std::string bytes, Handler done) {
        queue_.push_back({std::move(bytes), std::move(done)});
        if (queue_.size() == 1) sendNext();
    }

    void sendNext() {
        asio::async_write(socket_, asio::buffer(queue_.front().bytes),
                          [this](const asio::error_code& error, std::size_t size) {
                              const Sending sent = std::move(queue_.front());
                              queue_.pop_front();
                              if (!error && !queue_.empty()) sendNext();
                              if (sent.done) sent.done(error, size);
                          });
    }

    tcp::socket socket_;
    std::optional<ComPortControl> control_;
    std::deque<Sending> queue_;
};

}  // namespace

std::optional<LineServer> serverOf(const std::string& path) {
    for (const bool controlled : {false, true}) {
        const std::string_view scheme = controlled ? "rfc2217://" : "tcp://";
        if (!path.starts_with(scheme)) continue;
        const std::string place = path.substr(scheme.size());
        const std::size_t colon = place.rfind(':');
        if (colon == std::string::npos || colon == 0 || colon + 1 == place.size())
            return std::nullopt;
        std::string host = place.substr(0, colon);
        if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
        return LineServer{host, place.substr(colon + 1), controlled};
    }
    return std::nullopt;
}

std::unique_ptr<LineStream> openTcpStream(asio::io_context& io, const LineServer& server,
                                          const LineSettings& settings, Handshaking handshaking) {
    std::optional<ComPortControl> control;
    if (server.controlled) control.emplace(settings, handshaking);
    return std::make_unique<TcpStream>(connectTo(io, server), std::move(control));
}

}  // namespace kalvo
