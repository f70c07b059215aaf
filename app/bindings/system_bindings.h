// The bindings of this system: the one place where the program meets their types.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archive.h"
#include "platform/database.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/foreground_window.h"
#include "platform/keyboard_input.h"
#include "platform/log.h"
#include "platform/multidll.h"
#include "platform/port_device.h"
#include "platform/port_entry.h"
#include "platform/profile_files.h"
#include "platform/registry.h"
#include "platform/serial_port.h"
#include "platform/transfer_line.h"
#include "platform/typing_watch.h"

namespace kalvo {

// Which of the session's keyboards types: the one that suits it best, or the one asked for.
enum class KeyboardKind : std::uint8_t { kAutomatic, kX11, kWayland, kPortal };

// What every command uses.
struct SystemBindings {
    // The folder of the settings, key files and scenarios (it exists), and the one of
    // the files delivered with the program; code page 1252.
    std::string applicationFolder;
    std::string shippedData;
    std::unique_ptr<ProfileFiles> profiles;
    std::unique_ptr<Registry> registry;
    std::unique_ptr<FileSystem> files;
    std::unique_ptr<DatabaseEngine> databases;
    KeyboardKind keyboard = KeyboardKind::kAutomatic;
};

// `applicationFolder` is the one asked for on the command line (UTF-8), if any.
[[nodiscard]] SystemBindings createSystemBindings(
    const std::optional<std::string>& applicationFolder);

// The keyboard of the session. RuntimeError when there is none (no display).
[[nodiscard]] std::unique_ptr<KeyboardInput> connectKeyboard(KeyboardKind asked);

// What the user has to know of that keyboard, French, a sentence; empty for nothing.
[[nodiscard]] std::string keyboardRemark(const KeyboardInput& keyboard);

// What the sites of a session lock to take turns at its keyboard.
[[nodiscard]] std::filesystem::path keyboardTurnsFile();

// Where this user's programs lock what they share: nobody else can write there.
[[nodiscard]] std::filesystem::path userLocksFolder();

// Where the sites of this user are listed (code page 1252).
[[nodiscard]] std::string knownSitesFile();

// What happens around whatever is typed into; `rules` is asked whenever typing begins.
// RuntimeError when there is no display.
[[nodiscard]] std::unique_ptr<TypingWatch> connectTypingWatch(KeyboardKind asked,
                                                              std::function<WatchRules()> rules);

// Whether the stop key can be seen while that keyboard types.
[[nodiscard]] bool stopKeySeen(KeyboardKind asked);

// Who has the keyboard focus. RuntimeError when there is no display.
[[nodiscard]] std::unique_ptr<ForegroundWindow> watchForegroundWindow(KeyboardKind asked);

// The toolkit's window systems in the order they suit us; empty for its own choice.
[[nodiscard]] std::string_view windowSystems();

// Whether the environment names a display, as far as one has to be named.
[[nodiscard]] bool displayNamed();
// Whether that display takes a program in now.
[[nodiscard]] bool displayAnswers();
// `handler` is called when a library finds the display gone; it must not return.
void onDisplayLoss(void (*handler)());

// A layout by its name ("us", "fr"), without a session. RuntimeError for an unknown
// name.
[[nodiscard]] std::unique_ptr<KeyboardLayout> layoutByName(std::string_view name);

// The log of an application folder, shown on standard error too where it is `echoed`.
[[nodiscard]] std::unique_ptr<Log> openLog(std::string_view applicationFolder, bool echoed = false);

// The device of a port number. `profiles` must outlive it.
[[nodiscard]] std::function<PortDevice(int number)> portDevices(ProfileFiles& profiles,
                                                                std::string_view applicationFolder);

// Notices devices that come and go.
[[nodiscard]] PlugWatch plugWatch();

// The serial port of a run. `profiles` must outlive it.
[[nodiscard]] std::unique_ptr<SerialPort> createSerialPort(EventPump& events,
                                                           ProfileFiles& profiles,
                                                           std::string_view applicationFolder);

// What sites are packed in; null where the program was built without it.
[[nodiscard]] std::unique_ptr<ArchiveFormat> createArchiveFormat();

// The line of a file transfer. `profiles` must outlive it.
[[nodiscard]] std::unique_ptr<TransferLine> createTransferLine(ProfileFiles& profiles,
                                                               std::string_view applicationFolder);

// The communication library for portables that is named (UTF-8, a whole path) or installed
// beside the program; null when there is none. RuntimeError for one that cannot be used.
[[nodiscard]] std::unique_ptr<Multidll> findMultidll(const std::string& named);

// The serial ports of this machine, ascending.
[[nodiscard]] std::vector<PortEntry> listSerialPorts(ProfileFiles& profiles,
                                                     std::string_view applicationFolder);

// Whether the program starts with the user's session; `applicationFolder` as on the
// command line. RuntimeError when the session's settings cannot be written.
void setAutostart(bool on, const std::optional<std::string>& applicationFolder);

}  // namespace kalvo
