#include "platform/linux/port_names.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "text/ansi_text.h"

namespace kalvo {

namespace fs = std::filesystem;

namespace {

constexpr int kHighestPort = 256;

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

std::string firstLine(const fs::path& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
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

LinuxPortNames::LinuxPortNames(ProfileFiles& profileFiles, std::string iniFile,
                               std::string deviceFolder, std::string systemFolder)
    : profileFiles_(profileFiles),
      iniFile_(std::move(iniFile)),
      deviceFolder_(std::move(deviceFolder)),
      systemFolder_(std::move(systemFolder)) {}

std::string LinuxPortNames::resolve(int number) const {
    if (number < 1 || number > kHighestPort) return {};
    std::string configured = configuredDevice(number);
    if (!configured.empty()) return configured;
    const auto found = findDevices();
    const auto index = static_cast<std::size_t>(number - 1);
    return index < found.size() ? found[index] : std::string();
}

std::vector<PortEntry> LinuxPortNames::list() const {
    const auto found = findDevices();
    std::vector<PortEntry> entries;
    for (int number = 1; number <= kHighestPort; ++number) {
        const auto index = static_cast<std::size_t>(number - 1);
        std::string device = configuredDevice(number);
        if (device.empty() && index < found.size()) device = found[index];
        if (!device.empty()) entries.push_back({number, fromUtf8(device), describe(device)});
    }
    return entries;
}

std::string LinuxPortNames::configuredDevice(int number) const {
    return toUtf8(profileFiles_.read(iniFile_, "Ports", "COM" + std::to_string(number)));
}

std::vector<std::string> LinuxPortNames::findDevices() const {
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
bool LinuxPortNames::hasHardware(const std::string& name) const {
    return firstLine(fs::path(systemFolder_) / "class/tty" / name / "type") != "0";
}

std::string LinuxPortNames::describe(const std::string& device) const {
    std::error_code error;
    const fs::path target = fs::canonical(device, error);
    if (error) return std::string("introuvable"_ansi);
    if (isPseudoTerminal(target, deviceFolder_)) return std::string("pseudo-terminal"_ansi);

    const std::string name = target.filename().string();
    const fs::path hardware =
        fs::canonical(fs::path(systemFolder_) / "class/tty" / name / "device", error);
    if (error) return kindOf(name);
    const std::string product = productName(hardware, systemFolder_);
    const std::string driver = driverName(hardware);
    const std::string text = product.empty() ? kindOf(name) : fromUtf8(product);
    return driver.empty() ? text : text + " (" + fromUtf8(driver) + ")";
}

}  // namespace kalvo
