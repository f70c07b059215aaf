// The USB adapter behind a serial device, as the kernel describes it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace kalvo {

struct UsbPort {
    std::string vendor;   // four hexadecimal digits
    std::string product;  // likewise
    std::string serial;   // the adapter's own number; empty when it has none
    std::string adapter;  // the socket it is plugged into: "1-1.4"
    std::string place;    // socket and interface: "1-1.4:1.0", "1-1.4:1.0/1" for its second port

    // "usb:1a86:7523@1-1.4:1.0": the same as long as the adapter keeps its socket.
    [[nodiscard]] std::string topology() const {
        return "usb:" + vendor + ":" + product + "@" + place;
    }
    [[nodiscard]] bool sameModel(const UsbPort& other) const {
        return vendor == other.vendor && product == other.product;
    }
};

// Whether an entry of section Ports is a topology().
[[nodiscard]] bool isTopology(const std::string& entry);

// `terminal` is a device's name without its folder ("ttyUSB0"), `systemFolder` where the
// kernel describes it (/sys). Nothing for what is not on USB.
[[nodiscard]] std::optional<UsbPort> usbPortOf(const std::string& terminal,
                                               const std::filesystem::path& systemFolder);

}  // namespace kalvo
