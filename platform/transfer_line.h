// The line below a file transfer: bytes both ways, with real waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kalvo {

// One line, used by one thread. Failures are RuntimeErrors: those of SerialPort on
// opening, 8012 when the line is lost afterwards, 8018 while it is not open.
class TransferLine {
public:
    virtual ~TransferLine() = default;

    // Opens the port; `settings` as SerialPort takes them ("9600,N,8,1"). A line that is
    // open already is closed first.
    virtual void open(int port, std::string_view settings) = 0;
    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;

    // Hands bytes to the line; how many it took within the time.
    virtual std::size_t write(std::string_view bytes, int milliseconds) = 0;
    // Received bytes as soon as there are any; 0 when none came within the time.
    virtual std::size_t read(std::span<char> buffer, int milliseconds) = 0;
    // Drops what has been received.
    virtual void flushInput() = 0;

    // Milliseconds since some start; never goes back.
    [[nodiscard]] virtual std::int64_t now() = 0;
};

}  // namespace kalvo
