#include "scenario/action_steps.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kalvo {

namespace {

struct Marker {
    std::string_view action;
    ActionStep::Kind kind;
    std::string_view text;
};

constexpr auto kMarkers = std::to_array<Marker>({
    {"&TAB", ActionStep::Kind::kText, "\t"},
    {"&DATE", ActionStep::Kind::kDate, ""},
    {"&PASSLIGNE", ActionStep::Kind::kText, "\r\n"},
    {"&INCREMENT", ActionStep::Kind::kCounter, ""},
    {"&FERMER", ActionStep::Kind::kText, "%{q}"},
    {"&OUVRIR_E", ActionStep::Kind::kText, "%{c}"},
    {"&OUVRIR_S", ActionStep::Kind::kText, "%{r}"},
    {"&VALIDER", ActionStep::Kind::kText, "%{v}"},
});

constexpr std::string_view kTimerMarker = "&Timer";
constexpr std::size_t kTimerPauseAt = 7;  // behind the marker and one separator

// A key of the key files, or the text itself where they have none.
std::string keyOrText(std::string_view action, const KeyCorrespondenceTable& keys) {
    const std::string_view keyText = keys.textOf("{" + std::string(action) + "}");
    return std::string(keyText.empty() ? action : keyText);
}

}  // namespace

ActionStep understandAction(std::string_view action, const KeyCorrespondenceTable& keys) {
    ActionStep step;
    step.advances = action.starts_with('&') || action.starts_with('^');
    if (action.starts_with(kTimerMarker)) {
        step.kind = ActionStep::Kind::kTimer;
        step.text = action.substr(std::min(kTimerPauseAt, action.size()));
        step.stepsBack = true;
        return step;
    }
    if (!action.starts_with('&')) {
        step.text = keyOrText(action, keys);
        return step;
    }
    const auto* const marker = std::find_if(kMarkers.begin(), kMarkers.end(),
                                            [&](const Marker& m) { return m.action == action; });
    if (marker == kMarkers.end()) {
        step.kind = ActionStep::Kind::kField;
        return step;
    }
    step.kind = marker->kind;
    step.text = marker->text;
    step.stepsBack = true;
    return step;
}

std::vector<ActionStep> understandActions(const std::vector<std::string>& actions,
                                          const KeyCorrespondenceTable& keys) {
    std::vector<ActionStep> steps(1);
    for (std::size_t i = 1; i < actions.size(); ++i)
        steps.push_back(understandAction(actions[i], keys));
    return steps;
}

}  // namespace kalvo
