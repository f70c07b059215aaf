#include "scenario/scenario_loader.h"

#include <cstddef>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_file.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/settings_store.h"
#include "text/field_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

class ScenarioFileReader {
public:
    ScenarioFileReader(const Platform& platform, std::string file)
        : platform_(platform), file_(std::move(file)) {}

    [[nodiscard]] std::string text(const scenario_file::Entry& entry) const {
        return ReadIniValue(platform_.profiles, file_, entry.section, entry.key);
    }

    // Leaves `into` as it is when the value is missing or no number.
    template <typename Target, typename Convert>
    void number(const scenario_file::Entry& entry, Target& into, Convert convert) const {
        resumeNext([&] { into = convert(toInteger16(text(entry))); });
    }

private:
    const Platform& platform_;
    std::string file_;
};

// The items of an "@"-ended list up to the first empty one.
std::vector<std::string> listItems(std::string_view list) {
    std::vector<std::string> items;
    for (;;) {
        const std::string_view item = GetField(list, items.size() + 1, scenario_file::kItemEnd);
        if (item.empty()) return items;
        items.emplace_back(item);
    }
}

void loadType(const ScenarioFileReader& file, ActiveScenario& active) {
    active.FileMode = file.text(scenario_file::kType) == kFileType;
    active.FileNameFromFrame = false;
    if (!active.FileMode) return;
    const std::string path = file.text(scenario_file::kChemin);
    const std::size_t open = path.find('{');
    if (open == std::string::npos) return;
    active.FileNameFromFrame = true;
    // The closing brace is looked for from the start of the path; one that stands
    // before the opening brace, or none, leaves the name as it was.
    const std::size_t close = path.find('}');
    if (close != std::string::npos && close > open)
        active.FileNameField = path.substr(open + 1, close - open - 1);
}

// An empty list leaves the actions of the scenario before in place.
void loadActions(const ScenarioFileReader& file, ActiveScenario& active) {
    const auto items = listItems(file.text(scenario_file::kActionLine));
    if (items.empty()) return;
    active.ActionLines.assign(1, "");
    active.ActionLines.insert(active.ActionLines.end(), items.begin(), items.end());
}

void loadSubFrames(const ScenarioFileReader& file, ActiveScenario& active) {
    file.number(scenario_file::kPartialMode, active.PartialMode, [](std::int16_t n) { return n; });
    if (active.PartialMode != 1) return;
    const auto items = listItems(file.text(scenario_file::kSubFrames));
    if (items.empty()) return;
    active.SubFrameMap.assign(1, {});
    for (const std::string& item : items) {
        SubFrameSlot entry;
        entry.slot = static_cast<std::int16_t>(active.SubFrameMap.size());
        resumeNext([&] { entry.subFrame = toInteger16(item); });
        active.SubFrameMap.push_back(entry);
    }
}

void loadScenario(const Platform& platform, ScenarioRun& run, std::string_view name) {
    const ScenarioFileReader file(platform,
                                  findScenarioFile(platform.files, run.applicationFolder, name));
    file.number(scenario_file::kSpecif, run.active.SpecifMode,
                [](std::int16_t n) { return n == 1; });
    loadType(file, run.active);
    loadActions(file, run.active);
    loadSubFrames(file, run.active);
}

void say(const Platform& platform, std::string_view text) {
    platform.dialogs.message(text, kApplicationTitle, MessageIcon::kInformation);
}

}  // namespace

void LoadActiveScenario(const Platform& platform, ScenarioRun& run) {
    std::string& name = run.active.ScenarioName;
    name = readSetting(platform.registry, kRacScenChx);
    const std::string refusal = refusalOfName(name);
    if (!refusal.empty()) say(platform, refusal);
    const std::string file = findScenarioFile(platform.files, run.applicationFolder, name);
    if (!refusal.empty() || !platform.files.fileExists(file)) {
        writeSetting(platform.registry, kRacScenChx, "");
        name.clear();
    }
    if (name.empty()) {
        say(platform, "Aucun scénario n'est défini"_ansi);
        return;
    }
    loadScenario(platform, run, name);
    platform.icon.modify(trayTip(platform.port.CommPort(), name));
}

void LoadTestScenario(const Platform& platform, ScenarioRun& run, std::string_view name) {
    loadScenario(platform, run, name);
}

}  // namespace kalvo
