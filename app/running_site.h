// The one program that runs a site, and what it lets others know of itself.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/process/file_lock.h"
#include "platform/event_pump.h"

namespace kalvo {

// Held as long as a program works on an application folder.
class RunningSite {
public:
    // `program` as users know it; all texts code page 1252.
    RunningSite(std::string_view applicationFolder, std::string_view program,
                const LocalTime& since);
    RunningSite(const RunningSite&) = delete;
    RunningSite& operator=(const RunningSite&) = delete;
    ~RunningSite();

    // False when another program works on the folder: nothing may be opened in it.
    [[nodiscard]] bool alone() const { return alone_; }

    // More lines for whoever asks.
    void tell(std::string_view lines);

    // What the program that works on a folder tells (UTF-8, lines); nothing when none does.
    [[nodiscard]] static std::optional<std::string> stateOf(std::string_view applicationFolder);

private:
    FileLock user_;  // keeps this user's other programs out, whoever may write to the folder
    FileLock lock_;  // keeps out those of whom the folder is, and tells of us
    bool alone_;
    std::string program_;  // UTF-8
};

}  // namespace kalvo
