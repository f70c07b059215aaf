// From the database to the compiled scenario file.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/database.h"
#include "platform/platform.h"

namespace kalvo {

// Renumbers the actions of a scenario and writes its ScenarioFile, every key of it.
// Failing statements are passed over and nothing is shown. Nothing is done when the
// scenario is not in the database. True when every statement succeeded.
bool CompileScenario(const Platform& platform, Database& database,
                     std::string_view applicationFolder, std::int16_t numero);

}  // namespace kalvo
