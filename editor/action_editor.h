// The steps of a scenario: their list, the key picker and the context menu.
// Every change goes to the database at once; RuntimeErrors of its statements
// reach the caller, with the list showing what the database holds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/run_time_state.h"
#include "editor/current_scenario.h"
#include "editor/row_list.h"
#include "editor/step_history.h"
#include "platform/platform.h"

namespace kalvo {

class ActionEditor {
public:
    // Row i is step i + 1; behind the steps an empty row and the marker rows
    // "Boucle : n" and "Départ : n".
    RowList LstChamps;
    std::vector<std::string> LstTouches;
    // The next picked key takes the place of the selected row.
    bool insertMode = false;

    ActionEditor(const Platform& platform, RunTimeState& state, CurrentScenario& current)
        : platform_(platform), state_(state), current_(current) {}

    // Fills the picker with what the scenario's type can press.
    void ChargeTouches();

    // Shows the steps, and the loop and start points if there are steps. A gap that
    // an insert left behind is closed first, so that rows and numbers agree.
    void loadSteps(std::int16_t boucle, std::int16_t depart);
    // The same for the current scenario as it is in the database now.
    void reload();
    // Gives up an insert that waits for its key.
    void cancelInsert();

    // A click on a row (-1: beside the rows). Another row than the gap of an insert
    // gives the insert up.
    void select(int row);

    // Appends the picked entry as a step, or puts it in the place of the selected
    // step: as a new step in insert mode, else as the step's new value (its place
    // in the frame then stays what it was, whatever is answered). An empty entry
    // would end the compiled scenario early and is not taken.
    void pick(std::string_view entry);

    // Asks for a new value of a step; rows that are no steps are left alone.
    void editStep(int row);

    // The context menu: opens a gap before the selected step, deletes it, makes it
    // the loop point or the start point (without selection: none).
    void mnuinsert();
    void mnusupp();
    void mnuboucle();
    void mnudepart();

    // Moves a step before another row, and the selected step by one row; it stays selected.
    // Loop and start points keep their numbers, as they do when steps are inserted.
    void moveStep(int row, int before);
    void moveUp();
    void moveDown();
    // Takes the last change of these steps back; the one before it with the next call.
    void undo();

private:
    struct Marker;
    void mark(const Marker& marker);
    void showSteps(std::int16_t boucle, std::int16_t depart);
    void pickValue(const std::string& value);
    void append(const std::string& value);
    void removeSelected();
    [[nodiscard]] bool isStep(int row) const;
    [[nodiscard]] bool stepSelected() const;
    [[nodiscard]] int steps() const;
    void replaceRow(int row, const std::string& value);
    [[nodiscard]] int lastStep();
    [[nodiscard]] std::int16_t askPlace();
    [[nodiscard]] bool accepted(std::string_view typed);
    template <typename Change>
    void change(Change change);

    Platform platform_;
    RunTimeState& state_;
    CurrentScenario& current_;
    StepHistory history_;
};

}  // namespace kalvo
