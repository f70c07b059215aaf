#include "dashboard/site_copies.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>

#include "journal/batch_journal.h"
#include "platform/database.h"
#include "platform/event_pump.h"
#include "platform/notify_icon.h"
#include "platform/serial_port.h"
#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_store.h"
#include "scenario/tray_tip.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr std::string_view kPrefix = "Scen-";
constexpr std::string_view kSuffix = ".mdb";
constexpr std::string_view kBeforeReturn = "Scen-avant-retour.mdb";
// While the return is not done: whatever it comes from may be kBeforeReturn itself.
constexpr std::string_view kBeforeReturnNew = "Scen-avant-retour.kalvo-1.tmp";

constexpr std::size_t kDayLength = 10;  // "2024-03-05"

// The day of a daily copy; empty for any other file.
std::string_view dayOf(std::string_view name) {
    if (name.size() != kPrefix.size() + kDayLength + kSuffix.size() || !name.starts_with(kPrefix) ||
        !name.ends_with(kSuffix))
        return {};
    const std::string_view day = name.substr(kPrefix.size(), kDayLength);
    for (std::size_t i = 0; i < day.size(); ++i) {
        const bool hyphen = i == 4 || i == 7;
        if (hyphen ? day[i] != '-' : (day[i] < '0' || day[i] > '9')) return {};
    }
    return day;
}

// The names of the daily copies, the latest first.
std::vector<std::string> dailyCopies(FileSystem& files, std::string_view applicationFolder) {
    const std::string folder = copiesFolder(applicationFolder);
    if (!files.folderExists(folder)) return {};
    std::vector<std::string> names = files.list(folder);
    std::erase_if(names, [](const std::string& name) { return dayOf(name).empty(); });
    std::sort(names.begin(), names.end(), std::greater<>());
    return names;
}

std::string todaysCopy(const Platform& platform, std::string_view applicationFolder) {
    const std::string today = timeText(platform.events.now()).substr(0, kDayLength);
    return inFolder(copiesFolder(applicationFolder), std::string(kPrefix) + today + ".mdb");
}

// A database that cannot be read is kept as it is.
void copyWhateverIsThere(const Platform& platform, const std::string& from, const std::string& to) {
    if (!platform.files.fileExists(from)) return;
    try {
        platform.databases.CompactDatabase(from, to);
    } catch (const RuntimeError&) {
        platform.files.replace(to, platform.files.read(from));
    }
}

// The scenarios of a database; none when it cannot be read.
std::vector<std::string> scenariosOf(const Platform& platform, const std::string& database) {
    std::vector<std::string> names;
    resumeNext([&] { names = scenarioNames(*platform.databases.OpenDatabase(database)); });
    return names;
}

// What a scenario was compiled into would be typed on without it.
void forgetCompiled(const Platform& platform, RunTimeState& state,
                    const std::vector<std::string>& before) {
    const std::vector<std::string> now = scenarioNames(*state.database);
    for (const std::string& name : before) {
        const auto same = [&](const std::string& other) { return equalIgnoringCase(name, other); };
        if (std::any_of(now.begin(), now.end(), same)) continue;
        resumeNext(
            [&] { removeScenarioFile(platform.files, state.scenario.applicationFolder, name); });
        if (equalIgnoringCase(state.scenario.active.ScenarioName, name)) {
            state.scenario.active = {};
            platform.icon.modify(trayTip(platform.port.CommPort(), ""));
        }
    }
}

std::string compileAll(const Platform& platform, RunTimeState& state) {
    std::string problems;
    for (const std::string& name : scenarioNames(*state.database)) {
        std::string problem;
        try {
            if (const auto number = findScenario(*state.database, name))
                problem = CompileScenario(platform, *state.database,
                                          state.scenario.applicationFolder, *number)
                              .problem;
        } catch (const RuntimeError& error) {
            problem = error.description();
        }
        if (!problem.empty()) problems += "\r\n- " + problem;
    }
    return problems;
}

}  // namespace

std::vector<SiteCopy> siteCopies(FileSystem& files, std::string_view applicationFolder) {
    std::vector<SiteCopy> copies;
    const std::string before = inFolder(copiesFolder(applicationFolder), kBeforeReturn);
    if (files.fileExists(before))
        copies.push_back({before, std::string("avant le dernier retour en arrière"_ansi)});
    for (const std::string& name : dailyCopies(files, applicationFolder)) {
        const std::string day(dayOf(name));
        copies.push_back({inFolder(copiesFolder(applicationFolder), name),
                          day.substr(8, 2) + "/" + day.substr(5, 2) + "/" + day.substr(0, 4)});
    }
    return copies;
}

void makeDailyCopy(const Platform& platform, std::string_view applicationFolder) {
    platform.files.needFolder(copiesFolder(applicationFolder));
    platform.databases.CompactDatabase(scenarioDatabase(applicationFolder),
                                       todaysCopy(platform, applicationFolder));
    const std::vector<std::string> names = dailyCopies(platform.files, applicationFolder);
    for (std::size_t i = kDailyCopies; i < names.size(); ++i)
        platform.files.remove(inFolder(copiesFolder(applicationFolder), names[i]));
}

void keepDailyCopy(const Platform& platform, std::string_view applicationFolder) {
    if (!platform.files.fileExists(todaysCopy(platform, applicationFolder)))
        makeDailyCopy(platform, applicationFolder);
}

std::string replaceScenarios(const Platform& platform, RunTimeState& state, const std::string& by) {
    const std::string folder = state.scenario.applicationFolder;
    const std::string database = scenarioDatabase(folder);
    const std::string before = inFolder(copiesFolder(folder), kBeforeReturnNew);
    std::optional<std::int16_t> counter;
    resumeNext([&] { counter = readCounter(*platform.databases.OpenDatabase(database)); });
    const std::vector<std::string> scenarios = scenariosOf(platform, database);
    state.database.reset();
    const auto reopen = [&] { state.database = platform.databases.OpenDatabase(database); };
    try {
        copyWhateverIsThere(platform, database, before);
        platform.databases.CompactDatabase(by, database);
    } catch (const RuntimeError&) {
        resumeNext(reopen);
        resumeNext([&] { platform.files.remove(before); });
        throw;
    }
    reopen();
    if (platform.files.fileExists(before))
        platform.files.rename(before, inFolder(copiesFolder(folder), kBeforeReturn));
    if (counter) writeCounter(*state.database, *counter);
    forgetCompiled(platform, state, scenarios);
    const std::string problems = compileAll(platform, state);
    if (!readSetting(platform.registry, kRacScenChx).empty())
        LoadActiveScenario(platform, state.scenario);
    return problems.empty() ? std::string() : std::string("\r\n\r\nÀ corriger :"_ansi) + problems;
}

std::string returnTo(const Platform& platform, RunTimeState& state, const SiteCopy& copy) {
    const std::string problems = replaceScenarios(platform, state, copy.file);
    return std::string("Les scénarios sont ceux de la copie : "_ansi) + copy.title + "." + problems;
}

}  // namespace kalvo
