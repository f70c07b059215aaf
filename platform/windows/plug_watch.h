// Notices devices that are plugged in or out.
#pragma once

#include <functional>
#include <memory>

namespace kalvo {

// A PlugWatch over the device notifications of the system.
[[nodiscard]] std::shared_ptr<void> watchPlugging(std::function<void()> onChange);

}  // namespace kalvo
