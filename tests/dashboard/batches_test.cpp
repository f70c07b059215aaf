// The batches as the dashboard lists them, looks into them and takes them up again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "dashboard/batch_desk.h"
#include "dashboard/batch_list.h"
#include "dashboard/batch_look.h"
#include "scenario/scenario_store.h"
#include "tests/support/disk_journal.h"
#include "tests/support/site.h"
#include "tests/support/words.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

struct Batches : ::testing::Test, testing::Site {
    testing::DiskJournal file{folder.path()};
    BatchList list{&file};
    std::vector<std::tuple<std::int64_t, std::string, std::int32_t>> retyped;
    BatchDesk desk{platform, state, file,
                   [this](std::int64_t batch, std::string bytes, std::int32_t from) {
                       retyped.emplace_back(batch, std::move(bytes), from);
                   }};

    Batches() {
        add("2024-03-05 14:07:09", BatchState::kTyped, "REF001\r\n12\r\n", "", 1, 1);
        add("2024-03-06 08:00:00", BatchState::kInterrupted, "REF002\r\n1\r\nREF003\r\n2\r\n",
            "arrêtée au clavier"_ansi, 2, 1);
        state.scenario.active.ScenarioName = "Stock";
        state.scenario.active.ActionLines = {"", "&REF", "{TAB}", "&QTE", "~"};
    }
    void add(const char* time, BatchState was, std::string_view bytes, std::string_view reason,
             int passes, int done) {
        NewBatch batch{time, {3, "HT630", "Stock"}, BatchState::kReceived, 2 * passes, ""};
        file.update(file.append(batch, bytes, 0), was, passes, done, reason);
    }
};

TEST_F(Batches, AreFoundByWhatIsShownAndByWhatWasReceived) {
    struct Case {
        std::string_view text;
        std::optional<BatchState> state;
        const char* found;
    };
    for (const auto& [text, was, found] :
         {Case{"", {}, "21"}, Case{"ht630", {}, "21"}, Case{"03-06", {}, "2"},
          Case{"REF001", {}, "1"}, Case{"réf001"_ansi, {}, "1"}, Case{"ARRETEE", {}, "2"},
          Case{"REF001\r\n2", {}, ""}, Case{"", BatchState::kTyped, "1"},
          Case{"REF001", BatchState::kInterrupted, ""}}) {
        list.setFilter({std::string(text), was});
        std::string ids;
        for (const JournalEntry& entry : list.rows()) ids += cellOf(entry, BatchColumn::kNumber);
        EXPECT_EQ(ids, found) << text;
    }
    list.setFilter({});
    std::string row;
    for (int column = 0; column < kBatchColumns; ++column)
        row += cellOf(list.rows()[0], static_cast<BatchColumn>(column)) + "|";
    EXPECT_EQ(
        row, "2|2024-03-06 08:00:00|COM 3|HT630|Stock|1 sur 2|interrompu|arrêtée au clavier|"_ansi);
    BatchList none(nullptr);
    none.refresh();
    EXPECT_TRUE(none.rows().empty());
}

TEST_F(Batches, AreLookedIntoWithoutDoingAnything) {
    state.scenario.active.ActionLines.emplace_back("&INCREMENT");
    BatchLook look = lookAt(platform, state,
                            "A\x1D"
                            "1\r\n12\r\nB\r\n7\r\n");
    EXPECT_THAT(look.fields, ElementsAre("1 : A<1D>1", "2 : 12", "3 : B", "4 : 7"));
    EXPECT_EQ(look.keys.at(0), "Enregistrement 1 :");
    EXPECT_THAT(look.keys, ::testing::Contains("Enregistrement 2 :"));
    EXPECT_THAT(look.keys, ::testing::Contains("    Texte : 12"));
    EXPECT_EQ(readCounter(*state.database), 0);
    EXPECT_TRUE(world.keyboard.batches.empty());

    state.scenario.active.FileMode = true;
    EXPECT_THAT(lookAt(platform, state, "A\r\nB\r\n").keys, ElementsAre("A", "B"));
    std::string large;
    while (large.size() < 100'000) large += "REF\r\n1\r\n";
    look = lookAt(platform, state, large);
    EXPECT_EQ(look.fields.back(), "...");
    EXPECT_EQ(look.keys.back(), "...");
    EXPECT_EQ(textOf("a\rb\xE9\r\n\nc"), "a\r\nb\xE9\r\n\r\nc\r\n");
}

TEST_F(Batches, AreTakenUpAgainAsTheUserWantsIt) {
    list.refresh();
    const JournalEntry done = list.rows()[1];
    const JournalEntry broken = list.rows()[0];
    desk.retype(done);
    EXPECT_TRUE(retyped.empty()) << "it would be there twice";
    world.dialogs.confirmations = {true};
    desk.retype(done);
    desk.retype(broken);
    for (const char* answer : {"0", "3", "x", "2"}) {
        world.dialogs.inputs = {answer};
        desk.retypeFrom(broken);
        EXPECT_EQ(world.dialogs.lastDefault, "2");
    }
    world.dialogs.inputs = {std::nullopt};
    desk.retypeFrom(broken);
    const std::string bytes = file.bytes(broken.id);
    EXPECT_THAT(retyped, ElementsAre(std::tuple(1, file.bytes(1), 1), std::tuple(2, bytes, 1),
                                     std::tuple(2, bytes, 2)));
    world.dialogs.chosenFile = folder / "lot.txt";
    desk.saveAsText(broken);
    EXPECT_EQ(world.content("lot.txt"), bytes);

    state.scenario.active.ActionLines = {""};
    desk.retype(broken);
    EXPECT_EQ(retyped.size(), 3U) << "without a scenario it would only lose its state";
}

}  // namespace
}  // namespace kalvo
