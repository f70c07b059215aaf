#include "platform/windows/port_names.h"

#include <windows.h>
// Behind windows.h, which it needs.
#include <setupapi.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

// The n of "COMn"; 0 for another name.
int numberOf(std::string_view device) {
    int number = 0;
    if (!device.starts_with("COM")) return 0;
    const char* const end = device.data() + device.size();
    const auto [stop, error] = std::from_chars(device.data() + 3, end, number);
    return error == std::errc{} && stop == end ? number : 0;
}

// The short name would do for COM1 to COM9 only.
std::string pathOf(int number) { return R"(\\.\COM)" + std::to_string(number); }

// The class of serial and parallel ports.
constexpr GUID kPortsClass = {
    0x4d36e978, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

struct PresentPort {
    std::string instance;
    int number;
    std::string description;  // empty when the system has none
};

std::string portNameOf(HDEVINFO devices, SP_DEVINFO_DATA& device) {
    const HKEY key =
        SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return {};
    std::array<char, 64> name{};
    DWORD size = name.size() - 1;
    const LSTATUS status = RegQueryValueExA(key, "PortName", nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(name.data()), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? name.data() : "";
}

// "USB Serial Port (COM3)", as the device manager has it.
std::string descriptionOf(HDEVINFO devices, SP_DEVINFO_DATA& device) {
    std::array<wchar_t, 256> text{};
    for (const DWORD property : {DWORD{SPDRP_FRIENDLYNAME}, DWORD{SPDRP_DEVICEDESC}})
        if (SetupDiGetDeviceRegistryPropertyW(devices, &device, property, nullptr,
                                              reinterpret_cast<BYTE*>(text.data()),
                                              sizeof(text) - sizeof(wchar_t), nullptr))
            return ansiFromWide(text.data());
    return {};
}

// The ports that are plugged in, with the numbers they have now.
std::vector<PresentPort> presentPorts() {
    std::vector<PresentPort> ports;
    const HDEVINFO devices = SetupDiGetClassDevsA(&kPortsClass, nullptr, nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) return ports;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof(device);
    for (DWORD index = 0; SetupDiEnumDeviceInfo(devices, index, &device); ++index) {
        std::array<char, 512> instance{};
        if (!SetupDiGetDeviceInstanceIdA(devices, &device, instance.data(), instance.size(),
                                         nullptr))
            continue;
        if (const int number = numberOf(portNameOf(devices, device)))
            ports.push_back({instance.data(), number, descriptionOf(devices, device)});
    }
    SetupDiDestroyDeviceInfoList(devices);
    return ports;
}

std::string instanceOf(int number) {
    for (const PresentPort& port : presentPorts())
        if (port.number == number) return port.instance;
    return {};
}

std::string locate(const std::string& instance) {
    for (const PresentPort& port : presentPorts())
        if (port.instance == instance) return pathOf(port.number);
    return {};
}

// An instance has its bus in front: "FTDIBUS\...", "USB\...".
bool isInstance(const std::string& entry) {
    return !entry.starts_with('\\') && entry.find('\\') != std::string::npos;
}

}  // namespace

PortDevice portDevice(int number, const std::string& entry) {
    if (!entry.empty() && !isInstance(entry)) return {entry};
    std::string instance = entry.empty() ? instanceOf(number) : entry;
    if (instance.empty()) return {pathOf(number)};
    std::string name = "COM" + std::to_string(number) + " (" + instance + ")";
    return {std::move(name), entry.empty() ? instance : "",
            [instance] { return locate(instance); }};
}

std::vector<PortEntry> listPorts() {
    std::vector<PortEntry> ports;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(HARDWARE\DEVICEMAP\SERIALCOMM)", 0, KEY_QUERY_VALUE,
                      &key) != ERROR_SUCCESS)
        return ports;
    const std::vector<PresentPort> present = presentPorts();
    std::array<char, 256> name{};
    std::array<char, 256> data{};
    for (DWORD index = 0;; ++index) {
        DWORD nameSize = name.size();
        DWORD dataSize = data.size();
        const LSTATUS status = RegEnumValueA(key, index, name.data(), &nameSize, nullptr, nullptr,
                                             reinterpret_cast<BYTE*>(data.data()), &dataSize);
        if (status == ERROR_MORE_DATA) continue;
        if (status != ERROR_SUCCESS) break;
        const std::string_view text(data.data(), dataSize);
        const std::string device(text.substr(0, text.find('\0')));
        const int number = numberOf(device);
        if (number == 0) continue;
        ports.push_back({number, device, std::string(name.data(), nameSize)});
        for (const PresentPort& port : present)
            if (port.number == number && !port.description.empty())
                ports.back().description = port.description;
    }
    RegCloseKey(key);
    std::sort(ports.begin(), ports.end(),
              [](const PortEntry& a, const PortEntry& b) { return a.number < b.number; });
    return ports;
}

}  // namespace kalvo
