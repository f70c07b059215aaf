#include "editor/first_site.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "core/no_progress.h"
#include "core/script_typing.h"
#include "editor/action_editor.h"
#include "editor/current_scenario.h"
#include "editor/keys/key_tables.h"
#include "editor/scenario_choices.h"
#include "editor/scenario_editor.h"
#include "platform/log.h"
#include "platform/serial_port.h"
#include "scenario/frame_processing.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/assumed_profiles.h"
#include "settings/options.h"
#include "settings/serial_settings.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/number_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

// A scenario to begin with. "{...}" stands for the key that types it, under the name
// it has at the site; empty steps only fill the row.
struct Template {
    std::string_view label;
    std::string_view type;
    int fields;
    std::array<std::string_view, 6> steps;
};

constexpr std::array<Template, 4> kTemplates = {{
    {"Code puis Entrée"_ansi, kEmulationType, 1, {"&CODE", "{ENTER}"}},
    {"Code, Tab, Quantité, Entrée"_ansi, kEmulationType, 2, {"&CODE", "{TAB}", "&QTY", "{ENTER}"}},
    {"Emplacement, Tab, Code, Tab, Quantité, Entrée"_ansi,
     kEmulationType,
     3,
     {"&EMP", "{TAB}", "&CODE", "{TAB}", "&QTY", "{ENTER}"}},
    {"Code;Quantité dans un fichier"_ansi, kFileType, 2, {"&CODE", ";", "&QTY", "&PASSLIGNE"}},
}};
constexpr int kUsualTemplate = 1;
constexpr std::string_view kUsualSeparator = ".";

const Template& templateAt(int row) {
    return kTemplates[static_cast<std::size_t>(std::clamp(row, 0, int{kTemplates.size()} - 1))];
}

}  // namespace

bool nothingSetUp(const Platform& platform, const RunTimeState& state) {
    // Applying settings of which nothing is chosen stores port 0.
    return state.database &&
           integerPart(readPortSerie(platform.profiles, state.scenario.applicationFolder,
                                     port_serie::kPort)) == 0 &&
           scenarioNames(*state.database).empty();
}

FirstSite::FirstSite(const Platform& platform, RunTimeState& state)
    : serial(platform, state), platform_(platform), state_(state) {
    for (const Template& one : kTemplates) templates.rows.emplace_back(one.label);
    templates.selected = kUsualTemplate;
    serial.ChargeCommunication();
}

void FirstSite::followDevices(std::vector<std::string> now) {
    const auto appeared = [&](std::size_t row) {
        return !now[row].empty() && (row >= devices_.size() || devices_[row] != now[row]);
    };
    std::vector<int> rows;
    for (std::size_t row = 0; row < now.size(); ++row)
        if (appeared(row)) rows.push_back(static_cast<int>(row));
    devices_ = std::move(now);
    if (!portChosen_ && rows.size() == 1) serial.choosePort(rows.front());
}

void FirstSite::choosePort(int row) {
    portChosen_ = true;
    serial.choosePort(row);
}

bool FirstSite::toFile() const { return templateAt(templates.selected).type == kFileType; }

// Nothing when the site has no key for one of them.
std::optional<std::vector<std::string>> FirstSite::steps() const {
    const KeyTables tables = RemplirTouches(platform_.profiles, state_.scenario.applicationFolder);
    std::vector<std::string> found;
    for (const std::string_view step : templateAt(templates.selected).steps) {
        if (step.empty()) break;
        if (!step.starts_with('{')) {
            found.emplace_back(step);
            continue;
        }
        const auto key = std::find_if(tables.systemKey.begin(), tables.systemKey.end(),
                                      [&](const KeyBox& box) { return box.types == step; });
        if (key == tables.systemKey.end()) return std::nullopt;
        found.push_back(keyName(key->label));
    }
    return found;
}

std::string FirstSite::refusalOfTerminal() const {
    if (serial.CboProtocol.selected < 0) return "Choisissez le type du terminal.";
    if (serial.CboPort.selected < 0) return "Choisissez le port du terminal.";
    if (serial.CboVitesse.selected < 0) return "Choisissez la vitesse de la ligne.";
    return {};
}

std::string FirstSite::refusalOfScenario() const {
    std::string refusal = refusalOfNewName(*state_.database, scenarioName);
    if (sampleFields() == 0)
        refusal = "Tapez un enregistrement d'exemple, un champ par ligne.";
    else if (toFile() && trimBlanks(outputPath).empty())
        refusal = "Choisissez le fichier à écrire."_ansi;
    else if (toFile() && outputPath.find('\'') != std::string::npos)
        refusal = "Le chemin du fichier ne peut pas contenir d'apostrophe.";
    else if (!steps())
        refusal = "Les touches de ce modèle manquent dans les tables de touches du site."_ansi;
    return refusal;
}

// Blank lines at the end are no fields yet.
int FirstSite::sampleFields() const {
    const std::size_t end = sample.find_last_not_of(" \n");
    if (end == std::string::npos) return 0;
    return 1 + static_cast<int>(std::count(
                   sample.begin(), sample.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

std::string FirstSite::remark() const {
    const auto fields = [](int count) {
        return std::to_string(count) + (count == 1 ? " champ" : " champs");
    };
    const int wanted = templateAt(templates.selected).fields;
    const int given = sampleFields();
    if (given == wanted || given == 0) return {};
    return "L'exemple a " + fields(given) + std::string(", le modèle en prend "_ansi) +
           std::to_string(wanted) + std::string(" à la fois."_ansi);
}

ScriptPreview FirstSite::preview() const {
    const std::string& folder = state_.scenario.applicationFolder;
    // The options as they will be once the advisable ones are set.
    AssumedProfiles profiles(
        platform_.profiles, [&](std::string_view file, std::string_view, std::string_view key) {
            const auto options = allOptions();
            const bool set = advisedOptions && file == optionsIni(folder) &&
                             std::any_of(options.begin(), options.end(), [&](const auto& option) {
                                 return option.advisable && option.key == key;
                             });
            return set ? std::optional<std::string>("1") : std::nullopt;
        });
    NoProgress progress;
    const Platform dry = dryRun(platform_, profiles, progress);
    ScenarioRun run;
    run.applicationFolder = folder;
    run.counterUse = CounterUse::kReadOnly;
    run.DecimalSeparator = kUsualSeparator;
    run.active.FileMode = toFile();
    for (std::string& step : steps().value_or(std::vector<std::string>{}))
        run.active.ActionLines.push_back(std::move(step));
    run.keys.LoadKeyCorrespondence(profiles, folder);
    std::string frame;
    for (const char c : sample) (c == '\n' ? frame.append("\r\n") : frame.append(1, c));
    frame += "\r\n";
    SplitFrameFields(dry, run, frame);
    ScriptPreview preview;
    preview.toFile = run.active.FileMode;
    preview.script = BuildKeyScript(dry, run, frame);
    return preview;
}

void FirstSite::test(const TestDesktop& desktop) const {
    const ScriptPreview typed = preview();
    if (typed.toFile) return;
    platform_.log.write(LogLevel::kInformation, "Essai de l'assistant");
    leaveTimeToChangeWindow(platform_, desktop);
    if (targetReady(platform_, desktop)) typeScript(platform_, typed.script, typed.timerPause);
}

bool FirstSite::finish() {
    CurrentScenario current;
    ActionEditor actions(platform_, state_, current);
    ScenarioChoices choices(platform_, state_, serial, actions);
    ScenarioEditor scenarios(platform_, state_, current, actions, choices);
    scenarios.load();
    state_.database->Transaction([&] {
        scenarios.createNew();
        scenarios.form.TxtNomScen = scenarioName;
        scenarios.form.CboType.select(templateAt(templates.selected).type);
        scenarios.chooseType(scenarios.form.CboType.selected);
        if (toFile()) scenarios.form.TxtChemin = outputPath;
        scenarios.save();
        for (const std::string& step : steps().value_or(std::vector<std::string>{}))
            actions.pick(step);
    });
    storeSwitches();
    choices.form.CboChoix.select(scenarioName);
    choices.chooseConnection(choices.form.CboChoix.selected);
    choices.applyChoice();
    // Whoever finds the port closed afterwards says why.
    resumeNext([&] { serial.saveAndReconnect(); });
    choices.showInForce();
    return platform_.port.PortOpen();
}

void FirstSite::storeSwitches() {
    const std::string_view folder = state_.scenario.applicationFolder;
    if (!portActive(platform_.profiles, folder))
        WriteIniValue(platform_.profiles, port_serie::kSection, port_serie::kPortActive, "1",
                      portSerieIni(folder));
    if (!advisedOptions) return;
    for (const OptionInfo& info : allOptions())
        if (info.advisable) setOption(platform_.profiles, folder, info.option, 1);
}

}  // namespace kalvo
