// The serial ports of the machine.
#pragma once

#include <string>
#include <vector>

namespace kalvo {

struct PortEntry {
    int number = 0;           // the n of COMn
    std::string device;       // COMn
    std::string description;  // the driver's name for it, code page 1252
};

// The device path of a port; every number has one.
[[nodiscard]] std::string portDevice(int number);

// The ports there are now, ascending.
[[nodiscard]] std::vector<PortEntry> listPorts();

}  // namespace kalvo
