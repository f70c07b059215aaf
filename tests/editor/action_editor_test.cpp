#include "editor/action_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/editor/editor_site.h"
#include "tests/support/error_of.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using ::testing::IsEmpty;
using testing::kEmulationRow;
using testing::kFileRow;

struct Steps : ::testing::Test, testing::EditorSite {
    RowList& list = actions.LstChamps;
    const std::string start = std::string("Départ : "_ansi);

    void answer(const char* text) { world.dialogs.inputs = {text}; }
    void pickAt(int row, const char* entry) {
        actions.select(row);
        actions.pick(entry);
    }
};

TEST_F(Steps, ThePickerOffersWhatTheScenarioCanPress) {
    addScenario("Clavier", kEmulationRow, {});
    EXPECT_EQ(actions.LstTouches.size(), 3U + 23 + 15 + 2);
    EXPECT_EQ(actions.LstTouches[3], std::string("Touche Entrée"_ansi)) << "braces left out";
    EXPECT_EQ(actions.LstTouches[26], "Nouveau (Ctrl+N)");
    addScenario("Fic", kFileRow, {});
    EXPECT_EQ(actions.LstTouches.size(), 7U + 33 + 2);
    EXPECT_EQ(actions.LstTouches[4], "&PASSLIGNE");
    EXPECT_EQ(actions.LstTouches.back(), "Champs libre");
}

TEST_F(Steps, AppendedStepsStandBeforeTheMarkers) {
    addScenario("S", kEmulationRow, {"&CODE", "&QTY"});
    scenarios.loadSelected();
    answer("libre");
    actions.pick("Champs libre");
    answer("");
    actions.pick("Champs libre");
    actions.pick("");
    EXPECT_THAT(list.rows,
                ElementsAre("--- &CODE", "--- &QTY", "--- libre", "", "Boucle : 0", start + "0"));
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:&QTY:0", "3:libre:0"));
}

TEST_F(Steps, ReplacingGoesThroughAStatementWithoutItsBlank) {
    addScenario("Autre", kEmulationRow, {"a", "b", "c"});
    addScenario("S", kEmulationRow, {"&CODE", "&QTY", "Touche Tab"});
    pickAt(2, "Touche F1");
    EXPECT_EQ(list.selected, -1);
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:&QTY:0", "3:Touche F1:0"));
    answer("&EMP");
    actions.editStep(0);
    EXPECT_EQ(world.dialogs.lastDefault, "&CODE");
    EXPECT_EQ(world.dialogs.shown.back().title, "Modification de champ");
    answer("");
    actions.editStep(1);
    EXPECT_THAT(storedActions(), ElementsAre("1:&EMP:0", "2:&QTY:0", "3:Touche F1:0"));
    current.scenarioNumber = 1;
    EXPECT_THAT(storedActions(), ElementsAre("1:a:0", "2:b:0", "3:c:0"));
}

TEST_F(Steps, InsertingTakesTheGapBeforeTheSelectedStepAndDeletingClosesIt) {
    addScenario("S", kEmulationRow, {"&CODE", "&QTY"});
    actions.mnuinsert();
    EXPECT_EQ(world.dialogs.texts().back(),
              std::string("Veuillez sélectionner un champ avant d'insérer"_ansi));
    actions.select(0);
    actions.mnuinsert();
    EXPECT_THAT(list.rows, ElementsAre("", "--- &CODE", "--- &QTY"));
    actions.mnuinsert();
    actions.pick("Touche F1");
    EXPECT_THAT(list.rows, ElementsAre("--- Touche F1", "--- &CODE", "--- &QTY"));
    EXPECT_THAT(storedActions(), ElementsAre("1:Touche F1:0", "2:&CODE:0", "3:&QTY:0"));
    EXPECT_FALSE(actions.insertMode);

    actions.select(-1);
    actions.mnusupp();
    EXPECT_EQ(world.dialogs.texts().back(),
              std::string("Vous devez selectionner un champs à supprimer"_ansi));
    actions.select(0);
    actions.mnusupp();
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:&QTY:0")) << "the ranks close up";
    actions.select(1);
    actions.mnusupp();
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0"));
    EXPECT_THAT(list.rows, ElementsAre("--- &CODE"));
}

TEST_F(Steps, AnInsertThatIsGivenUpLeavesNoGap) {
    const std::vector<std::string> before = {"1:a:0", "2:b:0", "3:c:0"};
    addScenario("S", kEmulationRow, {"a", "b", "c"});
    for (const auto& [how, giveUp] : std::vector<std::pair<const char*, std::function<void()>>>{
             {"another row", [&] { actions.select(3); }},
             {"loading", [&] { scenarios.loadSelected(); }},
             {"deleting the gap", [&] { actions.mnusupp(); }},
             {"choosing the scenario", [&] { scenarios.chooseScenario(); }}}) {
        actions.select(1);
        actions.mnuinsert();
        giveUp();
        EXPECT_FALSE(actions.insertMode) << how;
        EXPECT_EQ(storedActions(), before) << how;
    }
    actions.select(1);
    actions.mnuinsert();
    actions.select(3);
    EXPECT_EQ(list.at(list.selected), "--- c") << "the row that was clicked";
    actions.insertMode = false;
    state.database->Execute("UPDATE Actions SET NumAction=7 WHERE NumAction=3");
    actions.reload();
    EXPECT_EQ(storedActions(), before) << "a gap from an earlier run";
}

TEST_F(Steps, StepsAreMovedAndEveryChangeCanBeTakenBack) {
    addScenario("S", kEmulationRow, {"a", "b", "c", "d"});
    scenarios.loadSelected();
    struct Case {
        int row, before, selected;
        std::vector<std::string> steps;
    };
    const std::vector<Case> cases = {{0, 3, 2, {"b", "c", "a", "d"}},
                                     {3, 0, 0, {"d", "b", "c", "a"}},
                                     {1, 9, 3, {"d", "c", "a", "b"}},
                                     {1, 2, 3, {"d", "c", "a", "b"}},   // it is there already
                                     {5, 0, 3, {"d", "c", "a", "b"}}};  // a marker
    for (const auto& one : cases) {
        actions.moveStep(one.row, one.before);
        EXPECT_EQ(readActionTexts(*state.database, current.scenarioNumber), one.steps);
        EXPECT_EQ(list.selected, one.selected);
        EXPECT_EQ(list.at(0), "--- " + one.steps[0]);
    }
    actions.moveUp();
    actions.moveDown();
    actions.mnuboucle();
    actions.select(1);
    actions.mnusupp();
    EXPECT_EQ(list.at(4), "Boucle : 4");
    EXPECT_EQ(storedActions().size(), 3U);
    for (int changes = 0; changes < 4; ++changes) actions.undo();
    EXPECT_THAT(storedActions(), ElementsAre("1:d:0", "2:c:0", "3:a:0", "4:b:0"));
    EXPECT_EQ(list.at(5), "Boucle : 0");
    actions.select(0);
    actions.mnuinsert();
    actions.undo();
    EXPECT_FALSE(actions.insertMode);
    for (int changes = 0; changes < 9; ++changes) actions.undo();
    EXPECT_THAT(storedActions(), ElementsAre("1:a:0", "2:b:0", "3:c:0", "4:d:0"));
}

TEST_F(Steps, MarkersStandAtTheEndAndAreNoSteps) {
    addScenario("S", kEmulationRow, {"a", "b"});
    actions.select(1);
    actions.mnuboucle();
    EXPECT_THAT(list.rows, ElementsAre("--- a", "--- b", "", "Boucle : 2"));
    actions.select(0);
    actions.mnudepart();
    actions.mnuboucle();
    EXPECT_THAT(list.rows, ElementsAre("--- a", "--- b", "", "Boucle : 1", "", start + "1"));
    EXPECT_EQ(readScenario(*state.database, 1)->Boucle, 1);
    EXPECT_EQ(readScenario(*state.database, 1)->Depart, 1);
    actions.select(-1);
    actions.mnuboucle();
    EXPECT_EQ(list.at(3), "Boucle : 0");

    world.dialogs.shown.clear();
    actions.editStep(3);
    EXPECT_THAT(world.dialogs.shown, IsEmpty());
    actions.select(3);
    actions.mnusupp();
    actions.mnuinsert();
    EXPECT_EQ(world.dialogs.shown.size(), 2U);
    pickAt(3, "c");
    EXPECT_THAT(storedActions(), ElementsAre("1:a:0", "2:b:0", "3:c:0"));
}

TEST_F(Steps, PartialFramesAskForThePlaceOfAField) {
    addScenario("S", kEmulationRow, {});
    current.partialFrame = true;
    for (const char* place : {"2", "1"}) {
        answer(place);
        actions.pick("&CODE");
    }
    actions.pick("Touche Tab");
    actions.pick("&TAB");
    EXPECT_THAT(storedActions(),
                ElementsAre("1:&CODE:2", "2:&CODE:1", "3:Touche Tab:0", "4:&TAB:0"));
    EXPECT_EQ(world.dialogs.texts().back(), "Place du champs dans la trame d'origine");
    const std::size_t asked = world.dialogs.shown.size();

    answer("9");
    pickAt(0, "&QTY");
    EXPECT_EQ(storedActions()[0], "1:&QTY:2") << "a replaced step keeps its place";
    actions.select(0);
    actions.mnuinsert();
    answer("5");
    actions.pick("Touche F1");
    EXPECT_EQ(storedActions()[0], "1:Touche F1:5");
    EXPECT_EQ(world.dialogs.shown.size(), asked + 2);
    answer("99999");
    EXPECT_EQ(errorOf([&] { actions.pick("&EMP"); }), error_number::kOverflow);
    EXPECT_EQ(std::count(list.rows.begin(), list.rows.end(), "--- &EMP"), 0);
}

TEST_F(Steps, WhatNoStepCanHoldIsRefusedWhereItIsTyped) {
    addScenario("S", kEmulationRow, {"a"});
    for (const char* typed : {"l'article", "a@b"}) {
        const std::size_t shown = world.dialogs.shown.size();
        world.dialogs.inputs = {typed, typed};
        actions.pick("Champs libre");
        actions.editStep(0);
        EXPECT_EQ(world.dialogs.shown.size(), shown + 4) << "two questions, two refusals";
    }
    EXPECT_EQ(list.rows.front(), "--- a");
    EXPECT_THAT(storedActions(), ElementsAre("1:a:0"));
}

}  // namespace
}  // namespace kalvo
