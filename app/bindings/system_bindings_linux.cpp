#include <algorithm>
#include <cstdlib>

#include "app/application_folder.h"
#include "app/bindings/system_bindings.h"
#include "platform/linux/autostart.h"
#include "platform/linux/linux_file_system.h"
#include "platform/linux/multidll_library.h"
#include "platform/linux/ports/plug_watch.h"
#include "platform/linux/ports/port_names.h"
#include "platform/linux/settings/linux_profile_files.h"
#include "platform/linux/settings/registry_file.h"
#include "platform/linux/user_folders.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/x11/layout/xkb_layout.h"
#include "settings/application_paths.h"
#include "settings/site_registry.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// A folder that was asked for is a site of its own, with its own choices.
std::unique_ptr<Registry> registryOf(std::string_view folder, bool ownSite) {
    auto usual = std::make_unique<RegistryFile>();
    if (!ownSite) return usual;
    return std::make_unique<SiteRegistry>(
        std::make_unique<RegistryFile>(toUtf8(inFolder(folder, "registre.reg"))), std::move(usual));
}

}  // namespace

SystemBindings createSystemBindings(const std::optional<std::string>& applicationFolder) {
    const ProgramFolders folders = programFolders();
    const std::string folder = kalvo::applicationFolder(folders, applicationFolder);
    return {folder,
            shippedDataFolder(folders),
            std::make_unique<LinuxProfileFiles>(),
            registryOf(folder, applicationFolder.has_value()),
            std::make_unique<LinuxFileSystem>(),
            std::make_unique<SqliteEngine>()};
}

std::filesystem::path userLocksFolder() {
    std::filesystem::path folder = userRuntimeFolder();
    std::error_code ignored;  // a lock that cannot be made keeps nobody out
    std::filesystem::create_directories(folder, ignored);
    return folder;
}

std::filesystem::path keyboardTurnsFile() {
    std::string name = "clavier-";
    for (const char* const display : {"WAYLAND_DISPLAY", "DISPLAY"})
        if (const char* const value = std::getenv(display)) name += value;
    std::replace(name.begin(), name.end(), '/', '-');
    return userLocksFolder() / (name + ".verrou");
}

std::string knownSitesFile() {
    const std::string folder = userConfigFolder();
    std::error_code ignored;  // a list that cannot be kept lacks a site
    std::filesystem::create_directories(folder, ignored);
    return fromUtf8(folder + "/Sites.ini");
}

std::unique_ptr<KeyboardLayout> layoutByName(std::string_view name) { return makeXkbLayout(name); }

void setAutostart(bool on, const std::optional<std::string>& applicationFolder) {
    writeAutostartEntry(on, applicationFolder);
}

std::function<PortDevice(int number)> portDevices(ProfileFiles& profiles,
                                                  std::string_view applicationFolder) {
    const LinuxPortNames names(profiles, portSerieIni(applicationFolder));
    return [names](int number) { return names.device(number); };
}

PlugWatch plugWatch() { return watchPlugging; }

std::unique_ptr<Multidll> findMultidll(const std::string& named) {
    return findMultidllLibrary(named);
}

std::vector<PortEntry> listSerialPorts(ProfileFiles& profiles, std::string_view applicationFolder) {
    return LinuxPortNames(profiles, portSerieIni(applicationFolder)).list();
}

}  // namespace kalvo
