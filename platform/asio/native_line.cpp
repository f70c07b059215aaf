#include "platform/asio/native_line.h"

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

std::string presentPath(const PortDevice& device) {
    std::string path = device.locate();
    if (path.empty())
        throw RuntimeError(
            error_number::kPortInvalid,
            device.name + std::string(" : port série introuvable, appareil débranché ?"_ansi));
    return path;
}

}  // namespace kalvo
