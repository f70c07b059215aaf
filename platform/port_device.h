// The device behind a port number.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace kalvo {

struct PortDevice {
    std::string name;  // for the user; code page 1252
    // What section Ports has to say for the number to keep meaning this device, wherever it
    // is plugged in; empty when nothing tells the device from others or it is said already.
    std::string identity;
    // Where the device is now, as the system's file calls take it; empty while it is away.
    // Any thread may call it. Null: the number means nothing.
    std::function<std::string()> locate;

    PortDevice() = default;
    // What is known by its path alone; an empty path is no device.
    PortDevice(const std::string& path) {  // NOLINT(google-explicit-constructor)
        if (path.empty()) return;
        name = path;
        locate = [path] { return path; };
    }
    PortDevice(std::string shownName, std::string storedIdentity,
               std::function<std::string()> location)
        : name(std::move(shownName)),
          identity(std::move(storedIdentity)),
          locate(std::move(location)) {}
};

// Has `onChange` called, from a thread of its own, whenever a device is plugged in or out,
// as long as the result lives.
using PlugWatch = std::function<std::shared_ptr<void>(std::function<void()> onChange)>;

}  // namespace kalvo
