#include "platform/linux/ports/usb_port.h"

#include <system_error>

#include "platform/linux/ports/first_line.h"

namespace kalvo {

namespace fs = std::filesystem;

bool isTopology(const std::string& entry) { return entry.starts_with("usb:"); }

std::optional<UsbPort> usbPortOf(const std::string& terminal, const fs::path& systemFolder) {
    std::error_code error;
    const fs::path device = fs::canonical(systemFolder / "class/tty" / terminal / "device", error);
    if (error) return std::nullopt;
    // The interface is the folder right below the adapter's, which alone has the numbers.
    for (fs::path interface = device; interface.has_relative_path();
         interface = interface.parent_path()) {
        const fs::path adapter = interface.parent_path();
        UsbPort port{firstLine(adapter / "idVendor"), firstLine(adapter / "idProduct"),
                     firstLine(adapter / "serial"), adapter.filename().string(),
                     interface.filename().string()};
        if (port.vendor.empty()) continue;
        const std::string number = firstLine(device / "port_number");
        if (!number.empty() && number != "0") port.place += "/" + number;
        return port;
    }
    return std::nullopt;
}

}  // namespace kalvo
