// The serial ports of the machine.
#pragma once

#include <string>
#include <vector>

#include "platform/port_device.h"
#include "platform/port_entry.h"

namespace kalvo {

// The device of a port number; every number has one. `entry` is what section Ports says of the
// number: a device instance, which is followed to whatever number it has now, a path, or
// nothing.
[[nodiscard]] PortDevice portDevice(int number, const std::string& entry);

// The ports there are now, ascending.
[[nodiscard]] std::vector<PortEntry> listPorts();

}  // namespace kalvo
