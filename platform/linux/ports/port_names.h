// Which device a port number means on Linux.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/linux/ports/serial_devices.h"
#include "platform/port_device.h"
#include "platform/port_entry.h"
#include "platform/profile_files.h"

namespace kalvo {

// COMn is what key COMn in section "Ports" of the settings file says, when it is there;
// otherwise the n-th device found. Where the file gives that number to another device, the
// n-th one has the first number behind all devices found, so that it can be chosen, too.
class LinuxPortNames {
public:
    // `iniFile`: path of the settings file, read at every call.
    LinuxPortNames(ProfileFiles& profileFiles, std::string iniFile,
                   SerialDevices devices = SerialDevices());

    // The device of a number; no device when the number means nothing here. A path from the
    // settings file need not exist.
    [[nodiscard]] PortDevice device(int number) const;

    // Every number that means a device, ascending.
    [[nodiscard]] std::vector<PortEntry> list() const;

private:
    struct Meaning {
        std::string entry;  // of the settings file, or the path of a device found
        bool configured = false;
    };

    [[nodiscard]] std::map<int, Meaning> meanings() const;

    ProfileFiles& profileFiles_;
    std::string iniFile_;
    SerialDevices devices_;
};

}  // namespace kalvo
