#include "platform/linux/user_folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace kalvo {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string homeFolder() {
    std::string home = environment("HOME");
    if (!home.empty()) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user == nullptr ? "/" : user->pw_dir;
}

// Relative paths in these variables are invalid and ignored.
std::string folderOf(const char* variable, const char* standard) {
    std::string base = environment(variable);
    if (!base.starts_with('/')) base = homeFolder() + standard;
    return base + "/kalvo-horizon";
}

}  // namespace

std::string userConfigFolder() { return folderOf("XDG_CONFIG_HOME", "/.config"); }

std::string userRuntimeFolder() {
    std::string folder = environment("XDG_RUNTIME_DIR");
    folder = folder.starts_with('/') ? folder + "/kalvo-horizon"
                                     : "/tmp/kalvo-horizon-" + std::to_string(::getuid());
    ::mkdir(folder.c_str(), S_IRWXU);
    // Somebody else's folder of that name is none of ours.
    struct stat status {};
    const bool ours = ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
                      status.st_uid == ::getuid();
    return ours ? folder : userConfigFolder();
}

std::string userDataFolder() { return folderOf("XDG_DATA_HOME", "/.local/share"); }

}  // namespace kalvo
