#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "app/process/service_report.h"
#include "platform/shared/file_descriptor.h"

namespace kalvo {

void reportToServiceManager(std::string_view assignments) noexcept {
    const char* const path = std::getenv("NOTIFY_SOCKET");
    sockaddr_un address{};
    const std::size_t length = path == nullptr ? 0 : std::strlen(path);
    if (length == 0 || length >= sizeof(address.sun_path)) return;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path, length);
    // A name that belongs to no file.
    if (path[0] == '@') address.sun_path[0] = '\0';
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    (void)sendto(socket.number(), assignments.data(), assignments.size(), MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&address),
                 static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length));
}

}  // namespace kalvo
