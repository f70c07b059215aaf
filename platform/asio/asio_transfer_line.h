// The line of a file transfer over standalone Asio, for Linux and Windows.
#pragma once

#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>
#include <functional>
#include <string>

#include "platform/port_device.h"
#include "platform/transfer_line.h"

namespace kalvo {

// Reads and writes on the caller's thread. The port is for this program alone while
// it is open; DTR and RTS are raised.
class AsioTransferLine final : public TransferLine {
public:
    // The device of a port number.
    using PortResolver = std::function<PortDevice(int portNumber)>;

    explicit AsioTransferLine(PortResolver resolver);
    // Gives output half a second to leave.
    ~AsioTransferLine() override;
    AsioTransferLine(const AsioTransferLine&) = delete;
    AsioTransferLine& operator=(const AsioTransferLine&) = delete;

    void open(int port, std::string_view settings) override;
    void close() override;
    [[nodiscard]] bool isOpen() const override { return port_.is_open(); }
    std::size_t write(std::string_view bytes, int milliseconds) override;
    std::size_t read(std::span<char> buffer, int milliseconds) override;
    void flushInput() override;
    [[nodiscard]] std::int64_t now() override;

private:
    // Runs the one operation that was started, cancelled when the time is over.
    void runFor(int milliseconds);

    PortResolver resolver_;
    asio::io_context io_{1};
    asio::serial_port port_{io_};
};

}  // namespace kalvo
