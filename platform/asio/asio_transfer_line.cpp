#include "platform/asio/asio_transfer_line.h"

#include <array>
#include <asio/buffer.hpp>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/asio/native_line.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

using std::chrono::milliseconds;

constexpr std::int64_t kTimeToLeave = 500;

void checkTransfer(const asio::error_code& error, std::size_t count) {
    if (!error || count > 0 || error == asio::error::operation_aborted) return;
    throw RuntimeError(error_number::kPortIo,
                       std::string("Liaison série perdue : appareil débranché ?"_ansi));
}

}  // namespace

AsioTransferLine::AsioTransferLine(PortResolver resolver) : resolver_(std::move(resolver)) {}

AsioTransferLine::~AsioTransferLine() { close(); }

void AsioTransferLine::open(int port, std::string_view settings) {
    close();
    const LineSettings parsed = parseLineSettings(settings);
    const PortDevice device = resolver_(port);
    if (!device.locate)
        throw RuntimeError(error_number::kPortInvalid,
                           std::string("Le port COM"_ansi) + std::to_string(port) +
                               std::string(" n'existe pas sur ce poste"_ansi));
    port_.assign(openNativeLine(presentPath(device), parsed, Handshaking::kNone));
}

void AsioTransferLine::close() {
    if (!port_.is_open()) return;
    const std::int64_t deadline = now() + kTimeToLeave;
    while (hasUnsentOutput(port_.native_handle()) && now() < deadline)
        std::this_thread::sleep_for(milliseconds(1));
    releaseNativeLine(port_.native_handle());
    asio::error_code ignored;
    port_.close(ignored);
}

std::size_t AsioTransferLine::write(std::string_view bytes, int milliseconds) {
    if (!isOpen()) throw RuntimeError(error_number::kPortNotOpen, "port");
    asio::error_code failure;
    std::size_t taken = 0;
    port_.async_write_some(asio::buffer(bytes),
                           [&](const asio::error_code& error, std::size_t count) {
                               failure = error;
                               taken = count;
                           });
    runFor(milliseconds);
    checkTransfer(failure, taken);
    return taken;
}

std::size_t AsioTransferLine::read(std::span<char> buffer, int milliseconds) {
    if (!isOpen()) throw RuntimeError(error_number::kPortNotOpen, "port");
    asio::error_code failure;
    std::size_t got = 0;
    port_.async_read_some(asio::buffer(buffer.data(), buffer.size()),
                          [&](const asio::error_code& error, std::size_t count) {
                              failure = error;
                              got = count;
                          });
    runFor(milliseconds);
    checkTransfer(failure, got);
    return got;
}

void AsioTransferLine::runFor(int milliseconds) {
    io_.restart();
    io_.run_for(std::chrono::milliseconds(milliseconds));
    if (io_.stopped()) return;
    asio::error_code ignored;
    port_.cancel(ignored);
    io_.run();
}

void AsioTransferLine::flushInput() {
    std::array<char, 4096> dropped{};
    while (read(dropped, 0) > 0) continue;
}

std::int64_t AsioTransferLine::now() {
    return std::chrono::duration_cast<milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace kalvo
