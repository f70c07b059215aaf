#include "platform/asio/line_stream.h"

#include <asio/serial_port.hpp>
#include <asio/write.hpp>
#include <utility>

#include "platform/asio/tcp_stream.h"

namespace kalvo {

namespace {

class DeviceStream final : public LineStream {
public:
    DeviceStream(asio::io_context& io, NativeLine line) : port_(io, line), monitor_(line) {}
    ~DeviceStream() override { close(); }
    DeviceStream(const DeviceStream&) = delete;
    DeviceStream& operator=(const DeviceStream&) = delete;

    void asyncRead(asio::mutable_buffer buffer, Handler done) override {
        port_.async_read_some(buffer, std::move(done));
    }
    void asyncWrite(asio::const_buffer bytes, Handler done) override {
        asio::async_write(port_, bytes, std::move(done));
    }
    void configure(const LineSettings& settings, Handshaking handshaking) override {
        configureNativeLine(port_.native_handle(), settings, handshaking);
    }
    [[nodiscard]] bool hasUnsentOutput() noexcept override {
        return kalvo::hasUnsentOutput(port_.native_handle());
    }
    [[nodiscard]] bool tellsChanges() const noexcept override { return monitor_.supported(); }
    [[nodiscard]] LineMonitor::Changes changes() noexcept override { return monitor_.poll(); }
    [[nodiscard]] std::optional<ModemLines> modemLines() const noexcept override {
        return monitor_.modemLines();
    }
    void close() noexcept override {
        if (!port_.is_open()) return;
        releaseNativeLine(port_.native_handle());
        asio::error_code ignored;
        port_.close(ignored);
    }

private:
    asio::serial_port port_;
    LineMonitor monitor_;
};

}  // namespace

std::unique_ptr<LineStream> openLineStream(asio::io_context& io, const std::string& path,
                                           const LineSettings& settings, Handshaking handshaking) {
    if (const auto server = serverOf(path))
        return openTcpStream(io, *server, settings, handshaking);
    return std::make_unique<DeviceStream>(io, openNativeLine(path, settings, handshaking));
}

}  // namespace kalvo
