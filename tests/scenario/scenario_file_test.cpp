// From the database to the compiled file, and from there to the scenario in force.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "scenario/scenario_compiler.h"
#include "scenario/scenario_loader.h"
#include "scenario/scenario_names.h"
#include "scenario/scenario_warnings.h"
#include "settings/application_paths.h"
#include "settings/settings_store.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Scenarios : ::testing::Test, testing::Site {
    ScenarioRun& run = state.scenario;

    void execute(const std::string& sql) { state.database->Execute(sql); }
    void action(int number, const std::string& champs, const std::string& place = "0") {
        execute("INSERT INTO Actions (NumeroScen,NumAction,Champs,PlaceTrame) VALUES (3," +
                std::to_string(number) + "," + champs + "," + place + ")");
    }
    Compilation compile() { return CompileScenario(platform, *state.database, folder.path(), 3); }
    void set(const char* section, const char* key, const char* value, const char* name = "Stock") {
        world.compiled(name, section, key, value);
    }
    void load(const char* name = "Stock") {
        writeSetting(world.registry, kRacScenChx, name);
        LoadActiveScenario(platform, run);
    }
};

TEST_F(Scenarios, AreCompiledByteForByte) {
    execute(
        "INSERT INTO Scenarios (Numero,Nom,Type,Trame,Specif,Chemin,Boucle,Depart,NbrTrame) "
        "VALUES (3,'Stock','Fichier',1,0,'C:\\out\\a.txt',2,-1,3)");
    action(2, "'&CODE'", "2");
    action(5, "'-'");
    action(9, "'&QTY'", "1");
    EXPECT_TRUE(compile().complete);
    const std::string expected =
        "[Type]\r\nType=Fichier\r\n[Ligne]\r\nChamps=&CODE@-@&QTY@\r\n[Boucle]\r\nIndex=2\r\n"
        "[Depart]\r\nIndex=-1\r\n[Trame]\r\nTrame=2@1@\r\n[Partiel]\r\nChoix=1\r\nNbr=3\r\n"
        "[Mat]\r\nSpecif=0\r\n[Fichier]\r\nChemin=C:\\out\\a.txt\r\n";
    EXPECT_EQ(world.content("Scenarios/Stock.ini"), expected);
    EXPECT_EQ(readAction(*state.database, 3, 3)->Champs, "&QTY") << "renumbered";

    // Null columns; no path for an emulation; what a key can hold and a number cannot.
    execute("UPDATE Scenarios SET Type='Emulation',Trame=Null,Boucle=Null,NbrTrame=Null");
    execute("UPDATE Actions SET Champs=Null,PlaceTrame=99999 WHERE NumAction=2");
    compile();
    EXPECT_EQ(
        world.content("Scenarios/Stock.ini"),
        "[Type]\r\nType=Emulation\r\n[Ligne]\r\nChamps=&CODE@@&QTY@\r\n[Boucle]\r\nIndex=0\r\n"
        "[Depart]\r\nIndex=-1\r\n[Trame]\r\nTrame=2@1@\r\n[Partiel]\r\nChoix=0\r\nNbr=0\r\n"
        "[Mat]\r\nSpecif=0\r\n");
    // A list of places is cut where a reader would cut it, before the next one is added.
    state.database->Transaction([&] {
        for (int i = 4; i <= 700; ++i) action(i, "'x'", "123");
    });
    compile();
    const std::string list = profiles.read(scenarioFile(folder.path(), "Stock"), "Trame", "Trame");
    EXPECT_EQ(list.size(), kLongestProfileValue);
    EXPECT_THAT(world.content("Scenarios/Stock.ini"), HasSubstr(list.substr(0, 2054) + "123@\r\n"));

    execute("DELETE FROM Scenarios");
    EXPECT_FALSE(compile().complete) << "nothing to compile";
}

TEST_F(Scenarios, WithWhatNoFileCanHoldAreRefusedAndTheOldFileStays) {
    execute("INSERT INTO Scenarios (Numero,Nom,Type) VALUES (3,'Stock','Emulation')");
    action(1, "'a'");
    ASSERT_TRUE(compile().complete);
    const std::string good = world.content("Scenarios/Stock.ini");
    execute("UPDATE Actions SET Champs='a' || char(10) || '[Type]'");
    EXPECT_FALSE(compile().problem.empty());
    EXPECT_EQ(world.content("Scenarios/Stock.ini"), good);
    execute("UPDATE Actions SET Champs='a'");
    profiles.write(portSerieIni(folder.path()), "Port", "Port", "1");
    for (const char* name : {"../PortSerie", "a/b", "a\\b", "..", "a\tb"}) {
        execute("UPDATE Scenarios SET Nom='" + std::string(name) + "'");
        EXPECT_THAT(compile().problem, HasSubstr("refus")) << name;
        EXPECT_THAT(refusalOfName(name), HasSubstr("refus")) << name;
        world.dialogs.shown.clear();
        load(name);
        EXPECT_THAT(world.dialogs.texts().front(), HasSubstr("refus")) << name;
        EXPECT_EQ(readSetting(world.registry, kRacScenChx), "");
        removeScenarioFile(files, folder.path(), name);
    }
    EXPECT_EQ(world.content("PortSerie.ini"), "[Port]\r\nPort=1\r\n") << "reached by no name";
    EXPECT_EQ(refusalOfName("Réception d'été (2)"_ansi), "");
}

TEST_F(Scenarios, AreFoundWhateverTheCaseOfTheirNames) {
    execute("INSERT INTO Scenarios (Numero,Nom,Type) VALUES (3,'Stock','Emulation')");
    action(1, "'a'");
    compile();
    load("STOCK");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "a"));
    execute("UPDATE Scenarios SET Nom='stocK'");
    execute("UPDATE Actions SET Champs='b'");
    compile();
    EXPECT_EQ(files.list(scenariosFolder(folder.path())).size(), 1U) << "no second file beside it";
    load("stock");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "b"));
    removeScenarioFile(files, folder.path(), "STOCK");
    EXPECT_THAT(files.list(scenariosFolder(folder.path())), IsEmpty());
}

TEST_F(Scenarios, AreLoadedWithWhatTheirFileSays) {
    set("Type", "Type", "Fichier");
    set("Fichier", "Chemin", "C:\\data\\{3}.txt");
    set("Mat", "Specif", "1");
    set("Ligne", "Champs", "a@@b@");
    set("Partiel", "Choix", "1");
    set("Trame", "Trame", "2@x@1@");
    world.port.port = 4;
    load();
    EXPECT_EQ(run.active.ScenarioName, "Stock");
    EXPECT_TRUE(run.active.FileMode && run.active.FileNameFromFrame && run.active.SpecifMode);
    EXPECT_EQ(run.active.FileNameField, "3");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "a"));
    ASSERT_EQ(run.active.SubFrameMap.size(), 4U);
    EXPECT_EQ(run.active.SubFrameMap[1].subFrame, 2);
    EXPECT_EQ(run.active.SubFrameMap[2].subFrame, 0) << "no number";
    EXPECT_EQ(run.active.SubFrameMap[3].slot, 3);
    EXPECT_THAT(world.icon.log,
                ElementsAre(std::string("modify Kalvo COM 4 : Ouvert, Scénario : Stock"_ansi)));
    EXPECT_EQ(world.icon.lastTip.size(), kTipLength);

    // A test leaves the chosen one chosen; what a file lacks stays as it was.
    set("Ligne", "Champs", "t@", "Essai");
    LoadTestScenario(platform, run, "Essai");
    EXPECT_EQ(run.active.ScenarioName, "Stock");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "t"));
    EXPECT_EQ(world.icon.log.size(), 1U);
    set("Type", "Type", "Emulation", "Vide");
    load("Vide");
    EXPECT_THAT(run.active.ActionLines, ElementsAre("", "t"));
    EXPECT_TRUE(run.active.SpecifMode);
    EXPECT_FALSE(run.active.FileMode || run.active.FileNameFromFrame);
    set("Type", "Type", "Fichier");
    set("Fichier", "Chemin", "}{");
    load();
    EXPECT_TRUE(run.active.FileNameFromFrame);
    EXPECT_EQ(run.active.FileNameField, "3") << "braces in the wrong order name nothing";
    EXPECT_THAT(world.dialogs.shown, IsEmpty());

    // A choice whose file is gone is cleared.
    load("Disparu");
    EXPECT_EQ(readSetting(world.registry, kRacScenChx), "");
    EXPECT_EQ(run.active.ScenarioName, "");
    EXPECT_THAT(world.dialogs.texts(),
                ElementsAre(std::string("Aucun scénario n'est défini"_ansi)));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kInformation);
}

TEST_F(Scenarios, AreWarnedOfWhatWillNotWorkAsItLooks) {
    const std::string longStep(2000, 'x');
    struct Case {
        std::vector<std::string> steps;
        std::int16_t partial, fields;
        bool counts;
        std::int32_t counter;
        std::vector<std::string> words;  // one in each warning
    };
    const std::vector<Case> cases = {
        {{"&CODE", " ", longStep, std::string(44, 'y')}, 0, 0, false, 32'001, {}},
        {{longStep, std::string(53, 'y')}, 0, 0, false, 0, {"2054"}},
        {{"  ", "a@b"}, 0, 0, false, 0, {"première"_ansi.data()}},
        {{"a@b", "", "c@d", ""}, 0, 0, false, 0, {"1 contient", "2 est vide"}},
        {{"a"}, 1, 3, false, 0, {"TramePartielle"}},
        {{"a"}, 1, 0, true, 0, {"sans nombre"}},
        {{"a"}, 1, 3, true, 0, {}},
        {{"&INCREMENT"}, 0, 0, false, 32'001, {"32001"}},
        {{"&INCREMENT"}, 0, 0, false, 32'000, {}},
    };
    for (const auto& [steps, partial, fields, counts, counter, words] : cases) {
        ScenarioRecord scenario;
        scenario.Trame = partial;
        scenario.NbrTrame = fields;
        const auto warnings = scenarioWarnings({scenario, steps, counts, counter});
        ASSERT_EQ(warnings.size(), words.size()) << steps.front().substr(0, 20);
        for (std::size_t i = 0; i < words.size(); ++i)
            EXPECT_THAT(warnings[i], HasSubstr(words[i]));
    }
    // From the database, as a compilation tells of it.
    execute("INSERT INTO Scenarios (Numero,Nom,Type) VALUES (3,'Stock','Emulation')");
    execute("UPDATE Increment SET NunInc=32700");
    action(1, "'&INCREMENT'");
    EXPECT_THAT(compile().warnings, ElementsAre(HasSubstr("32700")));
}

}  // namespace
}  // namespace kalvo
