#include "platform/windows/port_names.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

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

}  // namespace

// The short name would do for COM1 to COM9 only.
std::string portDevice(int number) { return R"(\\.\COM)" + std::to_string(number); }

std::vector<PortEntry> listPorts() {
    std::vector<PortEntry> ports;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(HARDWARE\DEVICEMAP\SERIALCOMM)", 0, KEY_QUERY_VALUE,
                      &key) != ERROR_SUCCESS)
        return ports;
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
        if (const int number = numberOf(device))
            ports.push_back({number, device, std::string(name.data(), nameSize)});
    }
    RegCloseKey(key);
    std::sort(ports.begin(), ports.end(),
              [](const PortEntry& a, const PortEntry& b) { return a.number < b.number; });
    return ports;
}

}  // namespace kalvo
