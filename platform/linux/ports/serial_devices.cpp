#include "platform/linux/ports/serial_devices.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/ports/first_line.h"
#include "platform/linux/ports/usb_port.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace fs = std::filesystem;

namespace {

// The number of "ttyUSB12" for the prefix "ttyUSB".
std::optional<int> numberBehind(std::string_view prefix, std::string_view name) {
    if (name.substr(0, prefix.size()) != prefix) return std::nullopt;
    name.remove_prefix(prefix.size());
    int number = 0;
    const char* end = name.data() + name.size();
    const auto result = std::from_chars(name.data(), end, number);
    if (name.empty() || result.ec != std::errc{} || result.ptr != end || number < 0)
        return std::nullopt;
    return number;
}

// The product name of the USB device a terminal belongs to: the nearest folder
// above that has one.
std::string productName(fs::path folder, const fs::path& root) {
    while (folder.has_relative_path() && folder != root && folder != folder.parent_path()) {
        std::string product = firstLine(folder / "product");
        if (!product.empty()) return product;
        folder = folder.parent_path();
    }
    return {};
}

std::string driverName(const fs::path& device) {
    std::error_code error;
    return fs::read_symlink(device / "driver", error).filename().string();
}

std::string kindOf(std::string_view name) {
    if (numberBehind("ttyS", name)) return std::string("port série intégré"_ansi);
    if (numberBehind("ttyUSB", name)) return std::string("port série USB"_ansi);
    if (numberBehind("ttyACM", name)) return std::string("appareil USB"_ansi);
    return std::string("port série"_ansi);
}

bool isPseudoTerminal(const fs::path& device, const fs::path& deviceFolder) {
    return device.parent_path() == deviceFolder / "pts";
}

}  // namespace

SerialDevices::SerialDevices(std::string deviceFolder, std::string systemFolder)
    : deviceFolder_(std::move(deviceFolder)), systemFolder_(std::move(systemFolder)) {}

std::vector<std::string> SerialDevices::paths() const {
    std::vector<std::string> devices;
    std::error_code error;
    for (const std::string_view prefix : {"ttyS", "ttyUSB", "ttyACM"}) {
        std::vector<std::pair<int, std::string>> family;
        fs::directory_iterator entry(deviceFolder_, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            const auto number = numberBehind(prefix, name);
            if (number && hasHardware(name)) family.emplace_back(*number, entry->path().string());
        }
        std::sort(family.begin(), family.end());
        for (auto& member : family) devices.push_back(std::move(member.second));
    }
    return devices;
}

// The kernel makes ttyS nodes in advance; those without hardware have type 0. Where
// the type cannot be read every node counts.
bool SerialDevices::hasHardware(const std::string& name) const {
    return firstLine(fs::path(systemFolder_) / "class/tty" / name / "type") != "0";
}

std::string SerialDevices::describe(const std::string& path) const {
    if (path.find("://") != std::string::npos) return std::string("serveur de ports série"_ansi);
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    if (error) return std::string("introuvable"_ansi);
    if (isPseudoTerminal(target, deviceFolder_)) return std::string("pseudo-terminal"_ansi);

    const std::string name = target.filename().string();
    const fs::path hardware =
        fs::canonical(fs::path(systemFolder_) / "class/tty" / name / "device", error);
    // The driver of a built-in port is called "port" or the like.
    if (error || numberBehind("ttyS", name)) return kindOf(name);
    const std::string product = productName(hardware, systemFolder_);
    const std::string driver = driverName(hardware);
    const std::string text = product.empty() ? kindOf(name) : fromUtf8(product);
    return driver.empty() ? text : text + " (" + fromUtf8(driver) + ")";
}

std::string SerialDevices::locate(const std::string& entry) const {
    if (!isTopology(entry)) return entry;
    for (const std::string& path : paths()) {
        const auto usb = usbPortOf(fs::path(path).filename().string(), systemFolder_);
        if (usb && usb->topology() == entry) return path;
    }
    return {};
}

std::string SerialDevices::identityOf(const std::string& path) const {
    const std::string name = fs::path(path).filename().string();
    const auto usb = usbPortOf(name, systemFolder_);
    if (!usb) return {};
    // Makers give whole series one number, which then tells nothing.
    const auto all = paths();
    const bool alone = std::none_of(all.begin(), all.end(), [&](const std::string& other) {
        const auto twin = usbPortOf(fs::path(other).filename().string(), systemFolder_);
        return twin && twin->sameModel(*usb) && twin->serial == usb->serial &&
               twin->adapter != usb->adapter;
    });
    const std::string link = usb->serial.empty() || !alone ? "" : linkBySerialNumber(path);
    return link.empty() ? usb->topology() : link;
}

std::string SerialDevices::linkBySerialNumber(const std::string& path) const {
    std::error_code error;
    fs::directory_iterator link(fs::path(deviceFolder_) / "serial/by-id", error);
    for (; !error && link != fs::directory_iterator(); link.increment(error))
        if (fs::equivalent(link->path(), path, error)) return link->path().string();
    return {};
}

std::string SerialDevices::nameOf(const std::string& entry) const {
    // The links by serial number say what is missed; their folder does not.
    const fs::path place(entry);
    std::string shown =
        place.parent_path().filename() == "by-id" ? place.filename().string() : entry;
    if (isTopology(entry)) {
        const std::size_t at = entry.find('@');
        shown = "USB " + entry.substr(4, at - 4) + ", prise " + entry.substr(at + 1);
    }
    std::error_code error;
    const std::string path = locate(entry);
    if (path.empty() || !fs::exists(path, error)) return fromUtf8(shown);
    return describe(path) + ", " + fromUtf8(shown);
}

}  // namespace kalvo
