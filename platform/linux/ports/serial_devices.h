// The serial devices that are plugged into this machine.
#pragma once

#include <string>
#include <vector>

namespace kalvo {

// Looked for at every call, as devices come and go. An entry is what section Ports says of a
// number: a path, or the socket of an adapter that has no serial number (UsbPort::topology).
class SerialDevices {
public:
    // The folders are those of the running system unless a test brings its own.
    explicit SerialDevices(std::string deviceFolder = "/dev", std::string systemFolder = "/sys");

    // ttyS with hardware behind them, then ttyUSB, then ttyACM, each in the order of their
    // numbers.
    [[nodiscard]] std::vector<std::string> paths() const;

    // Where the device of an entry is now. A path is answered as it is, whether it exists or
    // not; empty for a socket without its adapter.
    [[nodiscard]] std::string locate(const std::string& entry) const;

    // The entry that keeps meaning the device at a path: its link by serial number or, where no
    // number tells it from others, its socket; empty for what is not on USB.
    [[nodiscard]] std::string identityOf(const std::string& path) const;

    // For the user, code page 1252: the device of a path, and that of an entry, which may be
    // away.
    [[nodiscard]] std::string describe(const std::string& path) const;
    [[nodiscard]] std::string nameOf(const std::string& entry) const;

private:
    [[nodiscard]] bool hasHardware(const std::string& name) const;
    [[nodiscard]] std::string linkBySerialNumber(const std::string& path) const;

    std::string deviceFolder_;
    std::string systemFolder_;
};

}  // namespace kalvo
