// The hot paths of the core. The argument is the number of records of two fields (or
// of actions); complexity is fitted at the end of each family and must be linear.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "keys/key_script.h"
#include "platform/sqlite/schema.h"
#include "platform/sqlite/sqlite_engine.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "tests/support/fake_platform.h"
#include "text/oem_text.h"

namespace {

using namespace kalvo;

std::string frameOf(std::int64_t records) {
    std::string frame;
    for (std::int64_t i = 0; i < records; ++i)
        frame += "3" + std::to_string(400000000000 + i) + "\r" + std::to_string(i % 100) + "\r\n";
    return frame;
}

void sizes(benchmark::internal::Benchmark* family) {
    family->RangeMultiplier(10)->Range(500, 50000)->Complexity(benchmark::oN);
}

void splitFrame(benchmark::State& state) {
    testing::FakePlatform world;
    ScenarioRun run;
    const std::string frame = frameOf(state.range(0));
    for (auto _ : state) SplitFrameFields(world.platform, run, frame);
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(frame.size()));
}
BENCHMARK(splitFrame)->Apply(sizes);

void buildKeyScript(benchmark::State& state) {
    testing::FakePlatform world;
    ScenarioRun run;
    run.active.ActionLines = {"", "&CODE", "{TAB}", "&QTY", "{ENTER}"};
    std::string frame = frameOf(state.range(0));
    SplitFrameFields(world.platform, run, frame);
    for (auto _ : state) benchmark::DoNotOptimize(BuildKeyScript(world.platform, run, frame));
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(frame.size()));
}
BENCHMARK(buildKeyScript)->Apply(sizes);

void readKeyScript(benchmark::State& state) {
    std::string script;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        script += "\xE9t\xE9 3400000000{TAB}12{ENTER}";
    std::int64_t events = 0;
    for (auto _ : state) {
        KeyScriptReader reader(script, ansiToOem);
        while (reader.next()) ++events;
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(events);
}
BENCHMARK(readKeyScript)->Apply(sizes);

// A site folder in memory-backed storage, removed at the end.
class Site {
public:
    explicit Site(std::int64_t actions) {
        std::string name = (std::filesystem::temp_directory_path() / "kalvo-bench-XXXXXX").string();
        folder = mkdtemp(name.data());
        std::filesystem::create_directory(folder + "/Scenarios");
        createScenarioDatabase(folder + "/Scen.mdb");
        database = engine.OpenDatabase(folder + "/Scen.mdb");
        insertScenario(*database, {1, "Banc", "Emulation", 0, 0, "", 0, 0, 0});
        for (std::int64_t i = 1; i <= actions; ++i)
            insertAction(*database, 1, static_cast<std::int32_t>(i), {"&CODE", 0});
    }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    ~Site() {
        database.reset();
        std::filesystem::remove_all(folder);
    }
    std::string folder;
    SqliteEngine engine;
    std::unique_ptr<Database> database;
};

void compileScenario(benchmark::State& state) {
    const Site site(state.range(0));
    testing::FakePlatform world;
    for (auto _ : state)
        if (!CompileScenario(world.platform, *site.database, site.folder, 1).complete)
            state.SkipWithError("not compiled");
    state.SetComplexityN(state.range(0));
}
BENCHMARK(compileScenario)
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
