#include "platform/linux/autostart.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/user_folders.h"
#include "platform/linux/whole_file.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

namespace fs = std::filesystem;

fs::path entryPath() {
    return fs::path(userConfigFolder()).parent_path() / "autostart" / "kalvo-horizon.desktop";
}

// An argument of an Exec line, in the quotes of the desktop entry format.
std::string quoted(const std::string& argument) {
    std::string text = "\"";
    for (const char c : argument) {
        if (c == '%') text += '%';
        // A backslash is taken off twice: from the string, then from the quotes.
        if (c == '"' || c == '`' || c == '$') text += "\\\\";
        if (c == '\\') text += "\\\\\\";
        text += c;
    }
    return text + '"';
}

std::string entry(const std::optional<std::string>& appDir) {
    std::string exec = quoted(fs::read_symlink("/proc/self/exe").string());
    if (appDir) exec += " --app-dir " + quoted(fs::absolute(*appDir).string());
    return "[Desktop Entry]\nType=Application\nName=KALVO Horizon\nIcon=kalvo-horizon\nExec=" +
           exec + "\n";
}

}  // namespace

void writeAutostartEntry(bool on, const std::optional<std::string>& appDir) {
    const fs::path path = entryPath();
    std::error_code failure;
    bool done = false;
    if (on) {
        fs::create_directories(path.parent_path(), failure);
        done = updateWholeFile(path.string(), [&](const std::string&) { return entry(appDir); });
    } else {
        fs::remove(path, failure);
        done = !failure;
    }
    if (!done)
        throw RuntimeError(error_number::kPathAccess,
                           std::string("Impossible de modifier "_ansi) + fromUtf8(path.string()));
}

}  // namespace kalvo
