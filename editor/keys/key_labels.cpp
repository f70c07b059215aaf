#include "editor/keys/key_labels.h"

#include <algorithm>
#include <utility>

#include "editor/warning.h"
#include "keys/key_files.h"
#include "platform/database.h"
#include "scenario/scenario_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

bool braced(std::string_view label) {
    return label.size() > 2 && label.front() == '{' && label.find('}') == label.size() - 1;
}

std::string_view withoutBraces(std::string_view label) {
    return braced(label) ? label.substr(1, label.size() - 2) : std::string_view();
}

std::vector<std::string> labelsOf(const std::vector<KeyBox>& boxes) {
    std::vector<std::string> labels;
    for (const KeyBox& box : boxes) labels.push_back(box.label);
    return labels;
}

// Why a label cannot be a key's, in French; empty when it can. An empty one is a key that
// nobody uses.
std::string refusalOf(const std::string& label, const std::vector<std::string>& all) {
    if (label.empty()) return {};
    const auto refuse = [&](std::string_view why) {
        return std::string("Le nom de touche "_ansi) + label + std::string(why);
    };
    if (!braced(label)) return refuse(" doit être entre accolades : {nom}."_ansi);
    if (label.find_first_of("'@") != std::string::npos)
        return refuse(" ne peut contenir ni apostrophe (') ni arobase (@)."_ansi);
    if (std::count(all.begin(), all.end(), label) > 1)
        return refuse(" est donné à deux touches."_ansi);
    return {};
}

bool mayCorrect(const Platform& platform, std::string_view old, std::string_view name, int steps) {
    return platform.dialogs.confirm(
        std::string("La touche "_ansi).append(old) +
            std::string(" s'appelle maintenant "_ansi).append(name) + ". " + std::to_string(steps) +
            std::string(" étape(s) de scénarios portent l'ancien nom. Les corriger ?"_ansi),
        kApplicationTitle, MessageIcon::kQuestion);
}

}  // namespace

KeyLabels::KeyLabels(const Platform& platform, RunTimeState& state, ScenarioChoices& choices,
                     std::string_view section)
    : platform_(platform),
      state_(state),
      choices_(choices),
      section_(section),
      boxes_(stored(true)),
      stored_(labelsOf(boxes_)) {}

std::vector<KeyBox> KeyLabels::stored(bool ofThisSection) const {
    KeyTables tables = RemplirTouches(platform_.profiles, state_.scenario.applicationFolder);
    const bool system = section_ == kSystemSection;
    return system == ofThisSection ? std::move(tables.systemKey) : std::move(tables.keys);
}

bool KeyLabels::unsaved() const { return labelsOf(boxes_) != stored_; }

bool KeyLabels::acceptable() const {
    std::vector<std::string> all = labelsOf(stored(false));
    for (const KeyBox& box : boxes_) all.push_back(box.label);
    for (const KeyBox& box : boxes_) {
        const std::string refusal = refusalOf(box.label, all);
        if (refusal.empty()) continue;
        showWarning(platform_.dialogs, refusal);
        return false;
    }
    return true;
}

bool KeyLabels::store() {
    if (!acceptable()) return false;
    const std::string& folder = state_.scenario.applicationFolder;
    const std::vector<std::string> former = labelsOf(stored(true));
    stored_ = labelsOf(boxes_);
    saveKeyLabels(platform_.profiles, folder, section_, stored_);
    state_.scenario.keys.LoadKeyCorrespondence(platform_.profiles, folder);
    renameSteps(former);
    return true;
}

void KeyLabels::renameSteps(const std::vector<std::string>& former) {
    bool corrected = false;
    for (std::size_t key = 0; key < stored_.size() && key < former.size(); ++key) {
        const std::string_view old = withoutBraces(former[key]);
        const std::string_view name = withoutBraces(stored_[key]);
        if (old == name || old.empty() || name.empty()) continue;
        const int steps = countActions(*state_.database, old);
        if (steps == 0 || !mayCorrect(platform_, old, name, steps)) continue;
        renameActions(*state_.database, old, name);
        corrected = true;
    }
    if (corrected) choices_.recompile();
}

}  // namespace kalvo
