// Which device a port number means on Linux.
#pragma once

#include <string>
#include <vector>

#include "platform/port_entry.h"
#include "platform/profile_files.h"

namespace kalvo {

// COMn is the path under key COMn in section "Ports" of the settings file, when it
// is there; otherwise the n-th device found: ttyS with hardware behind them, then
// ttyUSB, then ttyACM, each in the order of their numbers. Devices are looked for
// at every call, as they come and go.
class LinuxPortNames {
public:
    // `iniFile`: path of the settings file. The folders are those of the running
    // system unless a test brings its own.
    LinuxPortNames(ProfileFiles& profileFiles, std::string iniFile,
                   std::string deviceFolder = "/dev", std::string systemFolder = "/sys");

    // The device path in the bytes the file system takes; empty when the number
    // means nothing here. A path from the settings file need not exist.
    [[nodiscard]] std::string resolve(int number) const;

    // Every number that means a device, ascending.
    [[nodiscard]] std::vector<PortEntry> list() const;

private:
    [[nodiscard]] std::vector<std::string> findDevices() const;
    [[nodiscard]] bool hasHardware(const std::string& name) const;
    [[nodiscard]] std::string configuredDevice(int number) const;
    [[nodiscard]] std::string describe(const std::string& device) const;

    ProfileFiles& profileFiles_;
    std::string iniFile_;
    std::string deviceFolder_;
    std::string systemFolder_;
};

}  // namespace kalvo
