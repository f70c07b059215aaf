// What the steps of a scenario were before the last changes.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/database.h"
#include "scenario/scenario_store.h"

namespace kalvo {

// RuntimeErrors of the database.
class StepHistory {
public:
    // Notes the steps as they are now: they are about to change.
    void keep(Database& database, std::int16_t numero);
    // What was noted last was not changed.
    void drop();
    // Another scenario's steps are shown.
    void clear() { kept_.clear(); }
    // Puts the steps back as they were noted last; false when nothing was.
    bool undo(Database& database, std::int16_t numero);

private:
    struct Steps {
        std::vector<ActionRecord> actions;
        std::int16_t Boucle = 0;
        std::int16_t Depart = 0;
    };
    std::vector<Steps> kept_;  // the latest last
};

}  // namespace kalvo
