#include "scenario/file_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "settings/application_paths.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

class WritingFiles : public ::testing::Test {
protected:
    testing::FakePlatform world;
    ScenarioRun run;

    WritingFiles() {
        run.applicationFolder = "/app";
        run.active.ScenarioName = "Stock";
        path("/out/lot.txt");
        world.files.folders = {"", "/out"};
    }
    // The path as a user of this system writes it.
    static std::string native(std::string text) {
        std::replace(text.begin(), text.end(), '/', kPathSeparator);
        return text;
    }
    void path(const char* chemin) {
        world.profiles.write(scenarioFile("/app", "Stock"), "Fichier", "Chemin", native(chemin));
    }
    static std::string done(const char* file) {
        return std::string("Fichier ").append(native(file)).append(" : généré"_ansi);
    }
    void write(std::string_view text) { WriteFileLine(world.platform, run, text); }
};

TEST_F(WritingFiles, EachTextReplacesTheFile) {
    write("one");
    write("two\r\n");
    EXPECT_EQ(world.files.files["/out/lot.txt"], "two\r\n");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre(done("/out/lot.txt"), done("/out/lot.txt")));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kInformation);
}

TEST_F(WritingFiles, SpecifModeMakesANewFileEachTime) {
    run.active.SpecifMode = true;
    path("/out/lot.v1.txt");
    for (const char* text : {"a", "b", "c"}) write(text);
    EXPECT_EQ(world.files.files["/out/lot.v1.txt"], "a");
    EXPECT_EQ(world.files.files["/out/lot1.v1.txt"], "b");
    EXPECT_EQ(world.files.files["/out/lot2.v1.txt"], "c");
    EXPECT_THAT(world.dialogs.texts().back(), done("/out/lot2.v1.txt"));
}

TEST_F(WritingFiles, MissingFoldersAreMadeExceptThoseWithADot) {
    path("/data/v1.2/jour/lot.txt");
    write("x");
    EXPECT_THAT(world.files.log,
                ElementsAre("mkdir /data", "mkdir /data/jour", "create /data/v1.2/jour/lot.txt",
                            "append /data/v1.2/jour/lot.txt"));
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
    path("/out/lot");
    write("x");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre(failure, failure, failure));
    EXPECT_FALSE(world.files.files.contains("/out/lot"));
}

TEST_F(WritingFiles, AFolderThatCannotBeListedIsReportedByNumber) {
    run.active.SpecifMode = true;
    world.files.listingFails = true;
    write("x");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Error: 76", done("/out/lot.txt")));
    EXPECT_EQ(world.dialogs.shown[0].icon, MessageIcon::kCritical);
}

TEST_F(WritingFiles, NamesInAFolderCompareExactly) {
    world.files.files["/out/Lot.txt"] = "";
    EXPECT_TRUE(FileExistsInFolder(world.platform, native("/out/"), "Lot.txt"));
    EXPECT_FALSE(FileExistsInFolder(world.platform, native("/out/"), "lot.txt"));
}

}  // namespace
}  // namespace kalvo
