#include "editor/scenario_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "editor/keys/key_labels.h"
#include "tests/editor/editor_site.h"
#include "tests/support/error_of.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::kEmulationRow;
using testing::kFileRow;
using ::testing::Not;

struct Scenarios : ::testing::Test, testing::EditorSite {
    ScenarioForm& form = scenarios.form;

    [[nodiscard]] ScenarioRecord stored(std::int16_t number) const {
        return readScenario(*state.database, number).value_or(ScenarioRecord());
    }
    [[nodiscard]] std::string choice(std::string_view name) {
        return readSetting(world.registry, name);
    }
    // What was said last, as this source writes it.
    [[nodiscard]] std::string lastMessage() const {
        return world.dialogs.shown.empty() ? "" : toUtf8(world.dialogs.shown.back().text);
    }
};

TEST_F(Scenarios, ANewScenarioIsNumberedAndItsStepsAreEnteredAtOnce) {
    scenarios.load();
    scenarios.createNew();
    scenarios.save();
    EXPECT_EQ(lastMessage(), "Vous devez préciser un type pour le scénario.");
    EXPECT_EQ(world.dialogs.shown.back().icon, MessageIcon::kCritical);
    EXPECT_THAT(form.LstScen.rows, IsEmpty());

    form.TxtNomScen = " ";
    scenarios.chooseType(kFileRow);
    EXPECT_TRUE(form.FraCheminShown);
    scenarios.save();
    EXPECT_EQ(lastMessage(), "Vous devez donner un nom au scénario.");
    form.TxtNomScen = "Stock";
    world.dialogs.inputs = {"3"};
    scenarios.clickPartialFrame(true);
    form.chkIncrement = true;
    form.TxtChemin = "C:\\lot.txt";
    scenarios.save();
    EXPECT_THAT(form.LstScen.rows, ElementsAre("--- Stock"));
    EXPECT_TRUE(scenarios.stepsShown);
    const ScenarioRecord record = stored(1);
    EXPECT_EQ(record.Nom + record.Type + record.Chemin, "StockFichierC:\\lot.txt");
    EXPECT_EQ(record.Trame * 100 + record.Specif * 10 + record.NbrTrame, 113);

    addScenario("STOCK", kEmulationRow, {});
    EXPECT_EQ(lastMessage(), "Un scénario de ce nom existe déjà.");
    EXPECT_EQ(current.scenarioNumber, 0);
    addScenario("Deux", kEmulationRow, {});
    EXPECT_EQ(current.scenarioNumber, 2);
    EXPECT_TRUE(form.FraCheminShown) << "only loading another scenario hides the path";
    world.dialogs.confirmations = {true};
    scenarios.deleteScenario();
    addScenario("Trois", kEmulationRow, {});
    EXPECT_EQ(current.scenarioNumber, 2) << "the number of a deleted last scenario is used again";
}

TEST_F(Scenarios, TheFieldCountQuestionDecidesOnTheBox) {
    for (const auto& [ticked, answer, shown] : {std::tuple{true, "2", true},
                                                {true, "", false},
                                                {true, "0", false},
                                                {false, "2", false}}) {
        world.dialogs.inputs = {answer};
        scenarios.clickPartialFrame(ticked);
        EXPECT_EQ(form.ChcPartiel, shown) << answer;
        EXPECT_EQ(lastMessage(), "Nombre de champs dans la trame :");
    }
}

TEST_F(Scenarios, SavingAnExistingOneStoresPathAndIncrementOnly) {
    addScenario("Stock", kEmulationRow, {"&CODE"});
    form.TxtNomScen = "Autre";
    scenarios.chooseType(kFileRow);
    form.TxtChemin = "C:\\x.txt";
    form.chkIncrement = true;
    scenarios.save();
    const ScenarioRecord record = stored(1);
    EXPECT_EQ(record.Nom + record.Type + record.Chemin, "StockEmulationC:\\x.txt");
    EXPECT_EQ(record.Specif, 1);
    EXPECT_THAT(form.LstScen.rows, ElementsAre("--- Stock"));
}

TEST_F(Scenarios, SelectingAndLoadingShowsWhatSavingWouldChange) {
    addScenario("Fic", kFileRow, {"&QTY"});
    scenarios.editPath("C:\\a.txt");
    addScenario("Clavier", kEmulationRow, {"&CODE", "Touche Tab"});
    actions.select(1);
    actions.mnuboucle();

    scenarios.select(0);
    EXPECT_EQ(current.scenarioNumber, 1);
    EXPECT_EQ(form.TxtChemin, "C:\\a.txt");
    EXPECT_THAT(actions.LstChamps.rows,
                ElementsAre("--- &QTY", "", "Boucle : 0", std::string("Départ : 0"_ansi)))
        << "the open step windows follow the selection";
    scenarios.select(1);
    scenarios.loadSelected();
    EXPECT_EQ(form.TxtNomScen, "Clavier");
    EXPECT_EQ(form.CboType.selected, kEmulationRow);
    EXPECT_FALSE(form.FraCheminShown);
    EXPECT_THAT(actions.LstChamps.rows, ElementsAre("--- &CODE", "--- Touche Tab", "", "Boucle : 2",
                                                    std::string("Départ : 0"_ansi)));

    // A new scenario is given up only when the user says so.
    scenarios.createNew();
    form.TxtNomScen = "Neuf";
    EXPECT_TRUE(scenarios.unsaved());
    scenarios.select(0);
    EXPECT_EQ(current.scenarioNumber, 0);
    EXPECT_EQ(form.TxtNomScen, "Neuf");
    world.dialogs.confirmations = {true};
    scenarios.select(0);
    EXPECT_EQ(current.scenarioNumber, 1);
    EXPECT_FALSE(scenarios.unsaved());

    // So is a tick that is not stored; a path that no statement takes is refused.
    scenarios.setIncrement(!form.chkIncrement);
    scenarios.createNew();
    EXPECT_EQ(current.scenarioNumber, 1);
    scenarios.editPath("l'un.txt");
    EXPECT_EQ(lastMessage(), "Le chemin d'un fichier ne peut pas contenir d'apostrophe.");
}

TEST_F(Scenarios, ANameThatNoFileOrStatementTakesIsRefusedWhereItIsTyped) {
    scenarios.createNew();
    scenarios.chooseType(kEmulationRow);
    for (const char* name : {"L'inventaire", "../PortSerie", "a\\b", "..", " "}) {
        form.TxtNomScen = name;
        scenarios.save();
        EXPECT_THAT(form.LstScen.rows, IsEmpty()) << name;
        EXPECT_FALSE(scenarios.stepsShown);
    }
    form.TxtNomScen = "Inventaire";
    scenarios.save();
    EXPECT_EQ(stored(1).Nom, "Inventaire");

    state.database->Execute("INSERT INTO Scenarios (Numero,Nom) VALUES (2,'L''autre')");
    scenarios.ChargeScenarios();
    EXPECT_EQ(errorOf([&] { scenarios.select(1); }), error_number::kDataSyntax);
    EXPECT_EQ(current.scenarioName, "Inventaire") << "name and number still belong together";
}

TEST_F(Scenarios, DeletingTakesFileRowsStepsAndChoicesAlong) {
    addScenario("Garde", kEmulationRow, {"&CODE"});
    addScenario("Stock", kEmulationRow, {"&CODE", "&QTY"});
    choices.chooseInventory("Stock");
    choices.chooseOrder("Garde");
    scenarios.chooseScenario();
    const std::string file = scenarioFile(folder.path(), "Stock");
    ASSERT_TRUE(files.fileExists(file));

    scenarios.deleteScenario();
    EXPECT_EQ(lastMessage(),
              "Attention. Cette suppression sera définitive. Voulez-vous réellement "
              "supprimer le scénario Stock?");
    EXPECT_TRUE(files.fileExists(file)) << "the answer was No";
    world.dialogs.confirmations = {true};
    scenarios.deleteScenario();
    EXPECT_FALSE(files.fileExists(file));
    EXPECT_THAT(form.LstScen.rows, ElementsAre("--- Garde"));
    current.scenarioNumber = 2;
    EXPECT_THAT(storedActions(), IsEmpty());
    EXPECT_EQ(stored(2).Nom, "");
    choices.applyConfiguration();
    EXPECT_EQ(choice(kRacScenChx) + "|" + choice(kRacInvent) + "|" + choice(kRacCde), "||Garde")
        << "no other is taken for the one in force";

    current.scenarioName.clear();
    scenarios.deleteScenario();
    EXPECT_EQ(lastMessage(), "Veuillez choisir un scénario.");
    current.scenarioNumber = 1;
    EXPECT_THAT(storedActions(), Not(IsEmpty()));
}

TEST_F(Scenarios, ARenamedOneStaysChosenAndInForceADeletedOneDoesNot) {
    addScenario("Stock", kEmulationRow, {"&CODE", "Touche F1"});
    scenarios.chooseScenario();
    choices.chooseOrder("Stock");
    world.dialogs.inputs = {"Reserve"};
    scenarios.rename();
    EXPECT_EQ(state.scenario.active.ScenarioName, "Reserve");
    EXPECT_EQ(choice(kRacScenChx), "Reserve");
    EXPECT_EQ(choices.form.RacCde, "Reserve") << "not applied yet, and followed";
    EXPECT_EQ(current.scenarioName, "Reserve");
    world.dialogs.inputs = {"Reserve", "Copie"};
    scenarios.duplicate();
    EXPECT_THAT(form.LstScen.rows, ElementsAre("--- Reserve", "--- Copie")) << "a name of its own";
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:Touche F1:0"));
    scenarios.select(0);
    world.dialogs.confirmations = {true};
    scenarios.deleteScenario();
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("")) << "it types no more";
    EXPECT_THAT(world.icon.lastTip, HasSubstr("Aucun sc"));
}

TEST_F(Scenarios, RenamingAKeyTakesItsStepsAlong) {
    addScenario("Stock", kEmulationRow, {"&CODE", "Touche Tab"});
    scenarios.chooseScenario();
    KeyLabels labels(platform, state, choices, kSystemSection);
    const std::string before = labels.boxes()[1].label;
    for (const char* refused : {"Tabulation", "{l'onglet}", "{a@b}", "{}", "{Copier (Ctrl+C)}"}) {
        labels.setLabel(1, refused);
        EXPECT_FALSE(labels.store()) << refused;
        EXPECT_TRUE(labels.unsaved());
    }
    labels.setLabel(1, before);
    EXPECT_FALSE(labels.unsaved());
    labels.setLabel(1, "{Tabulation}");
    world.dialogs.confirmations = {true};
    EXPECT_TRUE(labels.store());
    EXPECT_FALSE(labels.unsaved());
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:Tabulation:0"));
    EXPECT_EQ(state.scenario.keys.textOf("{Tabulation}"), "{TAB}");
    EXPECT_EQ(state.scenario.active.ActionLines.back(), "Tabulation") << "compiled and loaded";
}

TEST_F(Scenarios, ChoosingOneMakesItTheOneInForce) {
    addScenario("Stock", kFileRow, {"&CODE", "&TAB"});
    scenarios.editPath("C:\\a.txt");
    current.scenarioName.clear();
    form.LstScen.selected = -1;
    scenarios.chooseScenario();
    EXPECT_EQ(lastMessage(), "Veuillez choisir un scénario.");
    EXPECT_EQ(world.dialogs.shown.back().icon, MessageIcon::kExclamation);
    form.LstScen.selected = 0;
    scenarios.chooseScenario();
    EXPECT_EQ(choice(kRacScenChx), "Stock");
    EXPECT_THAT(state.scenario.active.ActionLines, ElementsAre("", "&CODE", "&TAB"));
    EXPECT_EQ(stored(1).Chemin, "C:\\a.txt");
}

TEST_F(Scenarios, ApplyingCompilesEveryChoiceAndKeepsOneSeparatorCharacter) {
    for (const char* name : {"Un", "Deux", "Trois"}) addScenario(name, kEmulationRow, {"&CODE"});
    scenarios.load();
    choices.chooseConnection(0);
    choices.chooseInventory("Deux");
    choices.readChoices();
    EXPECT_EQ(choices.form.RacInvent, "Deux") << "a choice not applied yet survives the tab change";
    choices.chooseOrder("Trois");
    for (const auto& [typed, kept] : {std::pair{",", ","}, {"", "."}, {"::", "."}}) {
        choices.form.txtSep = typed;
        choices.applyConfiguration();
        EXPECT_EQ(choice(kSepDec), kept);
        EXPECT_EQ(state.scenario.DecimalSeparator, kept);
    }
    EXPECT_EQ(choice(kRacScenChx) + choice(kRacInvent) + choice(kRacCde), "UnDeuxTrois");
    for (const char* name : {"Un", "Deux", "Trois"})
        EXPECT_TRUE(files.fileExists(scenarioFile(folder.path(), name))) << name;
    EXPECT_THAT(world.dialogs.shown, IsEmpty());
    EXPECT_FALSE(scenarios.unsaved());
}

TEST_F(Scenarios, ApplyingWithoutChoiceStillStoresThePortAndFailuresAreSummedUp) {
    scenarios.load();
    serial.ChargeCommunication();
    serial.choosePort(1);
    choices.applyConfiguration();
    EXPECT_EQ(lastMessage(), "Vous devez entrer un choix pour le scenario choisi.");
    EXPECT_EQ(portSetting(port_serie::kPort), "2");

    setPort(port_serie::kPortActive, "1");
    setPort(port_serie::kSpeed, "");
    addScenario("Un", kEmulationRow, {"&CODE"});
    choices.chooseConnection(0);
    world.port.openError = error_number::kPortInvalid;
    serial.chooseStopBits(0);
    choices.applyConfiguration();
    EXPECT_EQ(lastMessage(),
              "Une erreur vient de se produire. L'opération en cours a été annulée. "
              "Merci de bien vouloir recommencer");
    EXPECT_EQ(choice(kRacScenChx), "Un");
}

}  // namespace
}  // namespace kalvo
