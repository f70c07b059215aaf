#include <algorithm>

#include "app/application_folder.h"
#include "app/bindings/subkey_registry.h"
#include "app/bindings/system_bindings.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/windows/autostart.h"
#include "platform/windows/keyboard/named_layout.h"
#include "platform/windows/keyboard/windows_foreground_window.h"
#include "platform/windows/keyboard/windows_keyboard.h"
#include "platform/windows/keyboard/windows_typing_watch.h"
#include "platform/windows/multidll/installed_multidll.h"
#include "platform/windows/plug_watch.h"
#include "platform/windows/port_names.h"
#include "platform/windows/windows_file_system.h"
#include "platform/windows/windows_profile_files.h"
#include "platform/windows/windows_registry.h"
#include "settings/application_paths.h"
#include "settings/site_registry.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// A folder that was asked for is a site of its own, with its own choices.
std::unique_ptr<Registry> registryOf(std::string name, bool ownSite) {
    if (!ownSite) return std::make_unique<WindowsRegistry>();
    std::replace(name.begin(), name.end(), '\\', '/');
    return std::make_unique<SiteRegistry>(
        std::make_unique<SubkeyRegistry>(std::make_unique<WindowsRegistry>(), name),
        std::make_unique<WindowsRegistry>());
}

}  // namespace

SystemBindings createSystemBindings(const std::optional<std::string>& applicationFolder) {
    const ProgramFolders folders = programFolders();
    const std::string folder = kalvo::applicationFolder(folders, applicationFolder);
    return {folder,
            shippedDataFolder(folders),
            std::make_unique<WindowsProfileFiles>(),
            registryOf(folder, applicationFolder.has_value()),
            std::make_unique<WindowsFileSystem>(),
            std::make_unique<SqliteEngine>()};
}

std::unique_ptr<KeyboardInput> connectKeyboard(KeyboardKind) {
    return std::make_unique<WindowsKeyboard>();
}

std::string keyboardRemark(const KeyboardInput&) { return {}; }

std::filesystem::path userLocksFolder() {
    const std::filesystem::path folder = programFolders().userData;
    std::error_code ignored;  // a lock that cannot be made keeps nobody out
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

std::filesystem::path keyboardTurnsFile() { return userLocksFolder() / "clavier.verrou"; }

std::string knownSitesFile() {
    const std::u8string path = (programFolders().userData / "Sites.ini").u8string();
    return fromUtf8(std::string(path.begin(), path.end()));
}

std::unique_ptr<TypingWatch> connectTypingWatch(KeyboardKind, std::function<WatchRules()> rules) {
    return std::make_unique<WindowsTypingWatch>(std::move(rules));
}

bool stopKeySeen(KeyboardKind) { return true; }

std::unique_ptr<ForegroundWindow> watchForegroundWindow(KeyboardKind) {
    return std::make_unique<WindowsForegroundWindow>();
}

// Windows always has one.
bool displayNamed() { return true; }

std::string_view windowSystems() { return {}; }

bool displayAnswers() { return true; }

void onDisplayLoss(void (*)()) {}

std::unique_ptr<KeyboardLayout> layoutByName(std::string_view name) {
    return makeNamedLayout(name);
}

void setAutostart(bool on, const std::optional<std::string>& applicationFolder) {
    writeRunValue(on, applicationFolder);
}

std::function<PortDevice(int number)> portDevices(ProfileFiles& profiles,
                                                  std::string_view applicationFolder) {
    return [&profiles, file = portSerieIni(applicationFolder)](int number) {
        return portDevice(number, profiles.read(file, "Ports", "COM" + std::to_string(number)));
    };
}

PlugWatch plugWatch() { return watchPlugging; }

std::unique_ptr<Multidll> findMultidll(const std::string& named) {
    return findMultidllLibrary(named);
}

std::vector<PortEntry> listSerialPorts(ProfileFiles&, std::string_view) { return listPorts(); }

}  // namespace kalvo
