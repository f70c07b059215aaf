// The copies of the scenario database, and the way back to one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "platform/file_system.h"
#include "platform/platform.h"

namespace kalvo {

inline constexpr std::size_t kDailyCopies = 10;

// A copy in the folder "Copies" of the application folder.
struct SiteCopy {
    std::string file;
    std::string title;  // "05/03/2024", or what was there before the last return
};

// What there was before the last return, then the days, the latest first.
[[nodiscard]] std::vector<SiteCopy> siteCopies(FileSystem& files,
                                               std::string_view applicationFolder);

// Makes the copy of today, "Scen-2024-03-05.mdb", in place of one there is, and forgets those
// of days beyond the ten latest. RuntimeErrors of the data engine and of the file system.
void makeDailyCopy(const Platform& platform, std::string_view applicationFolder);
// The same unless there is one of today.
void keepDailyCopy(const Platform& platform, std::string_view applicationFolder);

// Puts a database in the place of the scenario database, compiles its scenarios and loads the one
// that is chosen; those that it lacks lose their compiled files. The counter goes on from where
// it is. What was there before becomes a copy of its own, also when it is damaged. Nobody else
// has the database open. The scenarios that do not compile, in French, if any. Errors as above;
// the database is then what it was.
[[nodiscard]] std::string replaceScenarios(const Platform& platform, RunTimeState& state,
                                           const std::string& by);

// The same by a copy. What the user should know in the end, in French.
[[nodiscard]] std::string returnTo(const Platform& platform, RunTimeState& state,
                                   const SiteCopy& copy);

}  // namespace kalvo
