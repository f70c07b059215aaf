#include "app/system_bindings.h"
#include "platform/asio/asio_serial_port.h"
#include "platform/asio/asio_transfer_line.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/windows/app_folder.h"
#include "platform/windows/autostart.h"
#include "platform/windows/multidll_library.h"
#include "platform/windows/named_layout.h"
#include "platform/windows/port_names.h"
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_foreground_window.h"
#include "platform/windows/windows_keyboard.h"
#include "platform/windows/windows_profile_files.h"
#include "platform/windows/windows_registry.h"

namespace kalvo {

SystemBindings createSystemBindings(const std::optional<std::string>& applicationFolder) {
    return {kalvo::applicationFolder(applicationFolder), shippedDataFolder(),
            std::make_unique<WindowsProfileFiles>(),     std::make_unique<WindowsRegistry>(),
            std::make_unique<WindowsFileSystem>(),       std::make_unique<SqliteEngine>()};
}

std::unique_ptr<KeyboardInput> connectKeyboard() { return std::make_unique<WindowsKeyboard>(); }

std::unique_ptr<ForegroundWindow> watchForegroundWindow() {
    return std::make_unique<WindowsForegroundWindow>();
}

std::unique_ptr<KeyboardLayout> layoutByName(std::string_view name) {
    return makeNamedLayout(name);
}

void setAutostart(bool on, const std::optional<std::string>& applicationFolder) {
    writeRunValue(on, applicationFolder);
}

std::unique_ptr<SerialPort> createSerialPort(EventPump& events, ProfileFiles&, std::string_view) {
    return std::make_unique<AsioSerialPort>(events, portDevice);
}

std::unique_ptr<TransferLine> createTransferLine(ProfileFiles&, std::string_view) {
    return std::make_unique<AsioTransferLine>(portDevice);
}

std::unique_ptr<Multidll> findMultidll() { return findMultidllLibrary(); }

std::vector<PortEntry> listSerialPorts(ProfileFiles&, std::string_view) { return listPorts(); }

}  // namespace kalvo
