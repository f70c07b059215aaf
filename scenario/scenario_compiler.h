// From the database to the compiled scenario file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/platform.h"
#include "platform/profile_files.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// Renumbers the actions of a scenario and writes its ScenarioFile, every key of it.
// Failing statements are passed over and nothing is shown. Nothing is done when the
// scenario is not in the database. True when every statement succeeded.
bool CompileScenario(const Platform& platform, Database& database,
                     std::string_view applicationFolder, std::int16_t numero);

// The same without a fresh file to begin with: every key goes through `profiles` to
// `file`. With profiles that keep what is written to themselves this is a dry run.
bool compileInto(ProfileFiles& profiles, Database& database, const std::string& file,
                 const ScenarioRecord& scenario);

}  // namespace kalvo
