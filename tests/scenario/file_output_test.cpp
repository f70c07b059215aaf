#include "scenario/file_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "settings/application_paths.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

struct WritingFiles : ::testing::Test {
    testing::FakePlatform world;
    ScenarioRun run;

    WritingFiles() {
        run.applicationFolder = world.folder.path();
        run.active.ScenarioName = "Stock";
        path("lot.txt");
    }
    // A file of the folder, as a user of this system writes it.
    [[nodiscard]] std::string native(const std::string& name) const {
        return std::filesystem::path(world.folder / name).make_preferred().string();
    }
    void path(const std::string& name) {
        world.compiled("Stock", "Fichier", "Chemin", name.empty() ? "" : native(name));
    }
    [[nodiscard]] std::string done(const std::string& name) const {
        return "Fichier " + native(name) + std::string(" : généré"_ansi);
    }
    void write(std::string_view text) { WriteFileLine(world.platform, run, text); }
};

TEST_F(WritingFiles, EachTextReplacesTheFile) {
    write("one");
    write("two\r\n");
    EXPECT_EQ(world.content("lot.txt"), "two\r\n");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre(done("lot.txt"), done("lot.txt")));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kInformation);
}

TEST_F(WritingFiles, SpecifModeMakesANewFileEachTime) {
    run.active.SpecifMode = true;
    path("lot.v1.txt");
    for (const char* text : {"a", "b", "c"}) write(text);
    for (const auto& [name, text] :
         {std::pair{"lot.v1.txt", "a"}, {"lot1.v1.txt", "b"}, {"lot2.v1.txt", "c"}})
        EXPECT_EQ(world.content(name), text);
    EXPECT_THAT(world.dialogs.texts().back(), done("lot2.v1.txt"));
    EXPECT_FALSE(FileExistsInFolder(world.platform, world.folder.path(), "LOT.v1.txt"))
        << "names compare exactly";

    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(world.folder.path());
    world.compiled("Stock", "Fichier", "Chemin", "ici.txt");
    for (const char* text : {"d", "e"}) write(text);
    std::filesystem::current_path(before);
    EXPECT_EQ(world.content("ici.txt") + world.content("ici1.txt"), "de") << "without a folder";
}

TEST_F(WritingFiles, MissingFoldersAreMadeExceptThoseWithADot) {
    path("data/v1.2/jour/lot.txt");
    write("x");
    EXPECT_TRUE(world.files.folderExists(native("data/jour")));
    EXPECT_FALSE(world.files.folderExists(native("data/v1.2")));
    path("data/mois/lot.txt");
    write("x");
    EXPECT_EQ(world.content("data/mois/lot.txt"), "x");
}

TEST_F(WritingFiles, FailuresAreSaidAndTheTextIsLost) {
    constexpr std::string_view failure =
        "Une erreur d'écriture de fichier vient de se produire. Votre fichier n'a pas pu être créé"_ansi;
    world.files.diskFull = true;
    write("x");
    world.files.diskFull = false;
    path("");
    write("x");
    run.active.SpecifMode = true;
    path("lot");
    write("x");
    EXPECT_FALSE(world.files.fileExists(native("lot"))) << "no place for a number";
    path("no.folder/lot.txt");
    write("x");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre(failure, failure, failure, "Error: 76", failure))
        << "a folder that cannot be listed is reported by number";
    EXPECT_EQ(world.dialogs.shown[3].icon, MessageIcon::kCritical);
}

}  // namespace
}  // namespace kalvo
