// What a service tells the service manager that started it (systemd's notify protocol).
#pragma once

#include <string_view>

namespace kalvo {

// Sends assignments ("READY=1", "STATUS=..."), one a line, UTF-8, to whoever asked for them
// with NOTIFY_SOCKET; nothing happens where nobody did.
void reportToServiceManager(std::string_view assignments) noexcept;

}  // namespace kalvo
