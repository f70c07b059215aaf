#include "scenario/scenario_compiler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Compiling : public ::testing::Test {
protected:
    testing::FakePlatform world;
    std::unique_ptr<Database> database = world.databases.OpenDatabase("");

    void scenario(testing::Row row) {
        world.databases.answers["SELECT * FROM Scenarios WHERE Numero=3"] = {std::move(row)};
    }
    void action(int position, DatabaseValue champs, DatabaseValue place) {
        world.databases.answers
            ["SELECT Champs,PlaceTrame FROM Actions WHERE NumeroScen=3 AND "
             "Numaction=" +
             std::to_string(position)] = {
            {{"Champs", std::move(champs)}, {"PlaceTrame", std::move(place)}}};
    }
    // The writes of a compilation, without the name of the file.
    std::vector<std::string> compile() {
        world.profiles.writes.clear();
        complete = CompileScenario(world.platform, *database, "/app", 3);
        std::vector<std::string> writes;
        for (const std::string& write : world.profiles.writes)
            writes.push_back(write.substr(write.find('[')));
        return writes;
    }
    bool complete = false;
};

TEST_F(Compiling, WritesEveryKeyInOrder) {
    scenario({{"Nom", std::string("Stock")},
              {"Type", std::string("Fichier")},
              {"Trame", std::int64_t{1}},
              {"Specif", std::int64_t{0}},
              {"Chemin", std::string("C:\\out\\a.txt")},
              {"Boucle", std::int64_t{2}},
              {"Depart", std::int64_t{-1}},
              {"NbrTrame", std::int64_t{3}}});
    action(1, std::string("&CODE"), std::int64_t{2});
    action(2, std::string("-"), std::int64_t{0});
    action(3, std::string("&QTY"), std::int64_t{1});
    EXPECT_THAT(compile(),
                ElementsAre("[Type]Type=", "[Ligne]Champs=", "[Type]Type=Fichier",
                            "[Boucle]Index=2", "[Depart]Index=", "[Depart]Index=-1",
                            "[Trame]Trame=", "[Partiel]Choix=1", "[Partiel]Nbr=3", "[Mat]Specif=",
                            "[Mat]Specif=0", "[Fichier]Chemin=", "[Fichier]Chemin=C:\\out\\a.txt",
                            "[Trame]Trame=2@", "[Trame]Trame=2@1@", "[Ligne]Champs=&CODE@-@&QTY@"));
    EXPECT_THAT(world.files.log, ElementsAre("create /app/Scenarios/Stock.ini"));
    EXPECT_TRUE(complete);
}

TEST_F(Compiling, NullColumnsAreZeroOrEmptyAndAnEmulationHasNoPath) {
    const DatabaseValue null;
    scenario({{"Nom", std::string("E")},
              {"Type", std::string("Emulation")},
              {"Trame", null},
              {"Specif", null},
              {"Chemin", std::string("kept.txt")},
              {"Boucle", null},
              {"Depart", null},
              {"NbrTrame", null}});
    action(1, std::string("a"), null);
    action(2, null, std::int64_t{0});
    action(3, std::string("b"), std::int64_t{99999});
    EXPECT_THAT(compile(), ElementsAre("[Type]Type=", "[Ligne]Champs=", "[Type]Type=Emulation",
                                       "[Boucle]Index=0", "[Depart]Index=", "[Depart]Index=0",
                                       "[Trame]Trame=", "[Partiel]Choix=0", "[Partiel]Nbr=0",
                                       "[Mat]Specif=", "[Mat]Specif=0", "[Ligne]Champs=a@@b@"));
}

TEST_F(Compiling, AnUnknownScenarioWritesNothing) {
    EXPECT_THAT(compile(), IsEmpty());
    EXPECT_FALSE(complete);
    EXPECT_THAT(world.files.log, IsEmpty());
}

TEST_F(Compiling, GoesOnBehindFailingStatements) {
    scenario({{"Nom", std::string("E")}, {"Type", std::string("Emulation")}});
    world.databases.answers
        ["SELECT NumAction FROM Actions WHERE NumeroScen=3 ORDER BY "
         "NumAction ASC"] = {{{"NumAction", std::int64_t{5}}}};
    action(1, std::string("a"), std::int64_t{0});
    world.databases.executeFails = true;
    EXPECT_EQ(compile().back(), "[Ligne]Champs=a@");
    world.profiles.readOnly = true;
    compile();
    EXPECT_FALSE(complete);
}

}  // namespace
}  // namespace kalvo
