#include "editor/step_history.h"

#include <cstddef>
#include <utility>

namespace kalvo {

namespace {

constexpr std::size_t kMostChanges = 50;

}  // namespace

void StepHistory::keep(Database& database, std::int16_t numero) {
    const auto scenario = readScenario(database, numero);
    if (!scenario) return;
    if (kept_.size() == kMostChanges) kept_.erase(kept_.begin());
    kept_.push_back({readActions(database, numero), scenario->Boucle, scenario->Depart});
}

void StepHistory::drop() {
    if (!kept_.empty()) kept_.pop_back();
}

bool StepHistory::undo(Database& database, std::int16_t numero) {
    if (kept_.empty()) return false;
    const Steps steps = std::move(kept_.back());
    kept_.pop_back();
    const auto now = readScenario(database, numero);
    database.Transaction([&] {
        replaceActions(database, numero, steps.actions);
        if (now && now->Boucle != steps.Boucle) updateBoucle(database, numero, steps.Boucle);
        if (now && now->Depart != steps.Depart) updateDepart(database, numero, steps.Depart);
    });
    return true;
}

}  // namespace kalvo
