#include "app/running_site.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "app/bindings/system_bindings.h"
#include "app/process/process_start.h"
#include "journal/batch_journal.h"
#include "settings/application_paths.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

std::filesystem::path stateFile(std::string_view applicationFolder) {
    return nativeFile(toUtf8(inFolder(applicationFolder, "kalvo-horizon.etat")));
}

// In a folder that others may write to, the state file may be theirs, and is then none.
std::filesystem::path userLock(std::string_view applicationFolder) {
    std::error_code error;
    const auto folder =
        std::filesystem::weakly_canonical(nativeFile(toUtf8(applicationFolder)), error);
    const std::size_t name = std::filesystem::hash_value(folder);
    return userLocksFolder() / ("dossier-" + std::to_string(name) + ".verrou");
}

}  // namespace

RunningSite::RunningSite(std::string_view applicationFolder, std::string_view program,
                         const LocalTime& since)
    : user_(userLock(applicationFolder)),
      lock_(stateFile(applicationFolder)),
      alone_(user_.take() && lock_.take()),
      program_(toUtf8(std::string(program) + ", processus " + std::to_string(processId()) +
                      ", depuis " + timeText(since) + "\n")) {
    if (alone_) lock_.write(program_);
}

RunningSite::~RunningSite() {
    if (alone_) lock_.write({});
}

void RunningSite::tell(std::string_view lines) {
    if (alone_) lock_.write(program_ + toUtf8(lines));
}

std::optional<std::string> RunningSite::stateOf(std::string_view applicationFolder) {
    const std::filesystem::path file = stateFile(applicationFolder);
    if (!FileLock::taken(file)) return std::nullopt;
    return FileLock::read(file);
}

}  // namespace kalvo
