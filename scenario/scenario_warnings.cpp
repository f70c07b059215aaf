#include "scenario/scenario_warnings.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/profile_files.h"
#include "scenario/scenario_file.h"
#include "text/ansi_text.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kCounterStep = "&INCREMENT";
constexpr std::int32_t kHighCounter = 32'000;

std::string stepText(std::size_t number) {
    return std::string("L'étape "_ansi) + std::to_string(number);
}

// The first step that a reader does not get whole; 0 when it gets all of them.
std::size_t firstCutStep(const std::vector<std::string>& steps) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        length += steps[i].size() + scenario_file::kItemEnd.size();
        if (length > kLongestProfileValue) return i + 1;
    }
    return 0;
}

void checkSteps(const std::vector<std::string>& steps, std::vector<std::string>& warnings) {
    if (!steps.empty() && trimBlanks(steps.front()).empty()) {
        // The line is read without the blanks around it, and then begins with its end.
        warnings.emplace_back(
            "La première étape est vide ou faite de blancs : aucune étape ne sera lue."_ansi);
        return;
    }
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].empty()) {
            warnings.push_back(stepText(i + 1) +
                               std::string(" est vide : le scénario s'arrête devant elle."_ansi));
            break;
        }
        if (steps[i].find(scenario_file::kItemEnd) != std::string::npos)
            warnings.push_back(
                stepText(i + 1) +
                std::string(" contient « @ », qui sépare les étapes : elle est coupée là."_ansi));
    }
    if (const std::size_t cut = firstCutStep(steps); cut != 0)
        warnings.push_back(std::string("Les étapes dépassent ensemble "_ansi) +
                           std::to_string(kLongestProfileValue) +
                           std::string(" caractères : la lecture s'arrête dans l'étape "_ansi) +
                           std::to_string(cut) + ".");
}

}  // namespace

std::vector<std::string> scenarioWarnings(const ScenarioFacts& facts) {
    std::vector<std::string> warnings;
    checkSteps(facts.steps, warnings);
    const bool counts =
        std::find(facts.steps.begin(), facts.steps.end(), kCounterStep) != facts.steps.end();
    if (facts.scenario.Trame == 1 && !facts.partialCountActs)
        warnings.emplace_back(
            "Trames partielles : le nombre de champs ne compte qu'avec l'option TramePartielle ; sans elle, rien ne sera saisi."_ansi);
    else if (facts.scenario.Trame == 1 && facts.scenario.NbrTrame < 1)
        warnings.emplace_back("Trames partielles sans nombre de champs : rien ne sera saisi."_ansi);
    if (counts && facts.counter > kHighCounter)
        warnings.push_back(std::string("Le compteur est à "_ansi) + std::to_string(facts.counter) +
                           std::string(" ; il s'arrêtera à 32767."_ansi));
    return warnings;
}

}  // namespace kalvo
