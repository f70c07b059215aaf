// The serial ports of the machine.
#pragma once

#include <string>
#include <vector>

#include "platform/port_entry.h"

namespace kalvo {

// The device path of a port; every number has one.
[[nodiscard]] std::string portDevice(int number);

// The ports there are now, ascending.
[[nodiscard]] std::vector<PortEntry> listPorts();

}  // namespace kalvo
