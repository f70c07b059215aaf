// From the database to the compiled scenario file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/platform.h"
#include "scenario/scenario_file.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// What a scenario's file will hold.
struct CompiledScenario {
    struct Value {
        scenario_file::Entry entry;
        std::string text;
    };
    std::vector<Value> values;  // in the order of the file
    std::vector<std::string> steps;
    // Every statement succeeded.
    bool complete = true;
    // Why there can be no such file, in French; empty when there can.
    std::string refusal;

    // The file, byte for byte.
    [[nodiscard]] std::string fileText() const;
};

// Renumbers the actions of a scenario and works its file out. Failing statements are
// passed over.
[[nodiscard]] CompiledScenario compiled(Database& database, const ScenarioRecord& scenario);

// What in it will not work as it looks, in French.
[[nodiscard]] std::vector<std::string> warningsOf(const Platform& platform, Database& database,
                                                  std::string_view applicationFolder,
                                                  const ScenarioRecord& scenario,
                                                  const CompiledScenario& compiled);

// How a compilation went.
struct Compilation {
    // The file is there and every statement succeeded.
    bool complete = false;
    // What the user should know, in French: a name or a step that can be in no file, a
    // file that could not be written. Empty when there is nothing to say.
    std::string problem;
    // What will not work as it looks.
    std::vector<std::string> warnings;
};

// Compiles a scenario and puts its ScenarioFile in place in one step: whoever looks
// finds the old file or the new one, whole, and a full disk leaves the old one.
// Nothing is shown. Nothing is done when the scenario is not in the database.
Compilation CompileScenario(const Platform& platform, Database& database,
                            std::string_view applicationFolder, std::int16_t numero);

}  // namespace kalvo
