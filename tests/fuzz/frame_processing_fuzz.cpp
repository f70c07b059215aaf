// Whatever actions and frame: processing ends, its output is in proportion to the frame,
// and fields come in order.
#include <algorithm>
#include <map>

#include "scenario/frame_processing.h"
#include "scenario/scenario_file.h"
#include "tests/fuzz/fuzz_property.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

constexpr std::size_t kMostActions = 20;
constexpr std::size_t kLongestStandIn = 12;  // of a marker: date, counter, "{TIMER}"

// On a disk they would be most of the work.
struct MemoryProfiles : ProfileFiles {
    std::map<std::string, std::string> values;

    static std::string placeOf(std::string_view section, std::string_view key) {
        return std::string(section) + "/" + std::string(key);
    }
    std::string read(std::string_view, std::string_view section, std::string_view key) override {
        return values[placeOf(section, key)];
    }
    bool write(std::string_view, std::string_view section, std::string_view key,
               std::string_view value) override {
        values[placeOf(section, key)] = value;
        return true;
    }
    std::vector<std::string> sections(std::string_view) override { return {}; }
    bool removeSection(std::string_view, std::string_view) override { return false; }
};

}  // namespace

void fuzz(FuzzInput& input) {
    static testing::FakePlatform world;
    MemoryProfiles profiles;
    const Platform platform{world.keyboard,  world.port,     profiles,     world.registry,
                            world.databases, world.files,    world.events, world.dialogs,
                            world.icon,      world.progress, world.watch,  world.log};
    ScenarioRun run;
    run.DecimalSeparator = input.text();
    run.active.ScenarioName = "Stock";
    for (const auto& entry :
         {scenario_file::kBoucle, scenario_file::kDepart, scenario_file::kSubFrameCount})
        profiles.write({}, entry.section, entry.key, input.text());
    for (const char subFrame : input.text())
        run.active.SubFrameMap.push_back({.slot = 0, .subFrame = std::int16_t(subFrame - '0')});
    run.active.PartialMode = run.active.SubFrameMap.size() > 1 ? 1 : 0;
    std::size_t onePass = 0;
    for (std::string action = input.text(); !action.empty(); action = input.text()) {
        onePass += action.size() + kLongestStandIn;
        run.active.ActionLines.push_back(action);
        if (run.active.ActionLines.size() == kMostActions) break;
    }
    const std::string frame = input.rest();

    SplitFrameFields(platform, run, frame);
    require(run.FrameFields->FieldCount() ==
                static_cast<std::size_t>(std::count(frame.begin(), frame.end(), '\r')),
            "each CR ends a field");
    std::string record = frame;
    const std::string script = BuildKeyScript(platform, run, record);
    require(script.size() <= ((record.size() + 1) * onePass + frame.size()) *
                                 std::max<std::size_t>(run.DecimalSeparator.size(), 1),
            "the script is in proportion to the frame");
    const auto& starts = run.passStarts;
    require(std::is_sorted(starts.begin(), starts.end()) &&
                (starts.empty() || starts.back() <= script.size()),
            "the passes of a script follow each other in it");

    for (const char* separator : {"", ".", ","}) {
        const std::string once = withDecimalSeparator(frame, separator);
        require(once.size() == frame.size(), "a point takes the place of a point");
        require(withDecimalSeparator(once, separator) == once, "a second time does nothing");
    }
    require(withDecimalSeparator(frame, "x").size() <= frame.size(), "decimals are only dropped");

    run.DecimalSeparator.clear();
    run.active.ActionLines = {"", "&CODE"};
    record = frame;
    std::string text = frame;
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
    require(text.starts_with(BuildKeyScript(platform, run, record)),
            "fields come in order, each once");
}

}  // namespace kalvo
