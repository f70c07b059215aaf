// Notices devices that are plugged in or out.
#pragma once

#include <functional>
#include <memory>

namespace kalvo {

// A PlugWatch over udev, which speaks once it has made the device's links. Null where the
// system has no udev.
[[nodiscard]] std::shared_ptr<void> watchPlugging(std::function<void()> onChange);

}  // namespace kalvo
