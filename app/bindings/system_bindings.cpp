// The bindings that are the same on every system.
#include "app/bindings/system_bindings.h"

#include "platform/asio/asio_serial_port.h"
#include "platform/asio/asio_transfer_line.h"
#include "platform/libzip/zip_archive.h"
#include "platform/spdlog/rotating_log.h"

namespace kalvo {

std::unique_ptr<SerialPort> createSerialPort(EventPump& events, ProfileFiles& profiles,
                                             std::string_view applicationFolder) {
    return std::make_unique<AsioSerialPort>(events, portDevices(profiles, applicationFolder),
                                            plugWatch());
}

std::unique_ptr<Log> openLog(std::string_view applicationFolder, bool echoed) {
    return std::make_unique<RotatingLog>(applicationFolder,
                                         echoed ? LogEcho::kStandardError : LogEcho::kNone);
}

std::unique_ptr<ArchiveFormat> createArchiveFormat() { return std::make_unique<ZipArchive>(); }

std::unique_ptr<TransferLine> createTransferLine(ProfileFiles& profiles,
                                                 std::string_view applicationFolder) {
    return std::make_unique<AsioTransferLine>(portDevices(profiles, applicationFolder));
}

}  // namespace kalvo
