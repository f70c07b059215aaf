#include "transfer/portable_transfer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/fake_multidll.h"
#include "tests/support/fake_platform.h"
#include "transfer/transfer_code_text.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class RecordingView : public PortableTransferView {
public:
    std::string shown;
    std::vector<std::int32_t> bar;
    bool barVisible = false;

    void showVersion(std::int32_t version) override { shown += "v" + std::to_string(version); }
    void showParameter(LineParameter parameter, std::int32_t value) override {
        constexpr std::string_view kNames = "ENT";
        shown += ' ';
        shown += kNames[static_cast<std::size_t>(parameter)];
        shown += std::to_string(value);
    }
    void showBar(std::int32_t maximum) override {
        barVisible = true;
        bar = {maximum};
    }
    void setBar(std::int32_t value) override { bar.push_back(value); }
    void hideBar() override { barVisible = false; }
    void showStoredName(std::string_view name) override { shown += std::string(name) + ";"; }
    void showCounts(std::int32_t bytes, std::int32_t packets) override {
        shown += std::to_string(bytes) + "/" + std::to_string(packets) + " ";
    }
};

struct PortableTransferTest : ::testing::Test {
    testing::FakePlatform world;
    testing::FakeMultidll library;
    RecordingView view;
    PortableTransfer transfer{world.platform, library, "/app"};

    PortableTransferTest() {
        transfer.load(view);
        view.shown.clear();
        world.dialogs.chosenFile = "/lot.txt";
    }
};

constexpr auto kOk = TransferCode::kSuccess;
constexpr auto kMore = TransferCode::kUnsuccessfulOrMore;
constexpr auto kBad = TransferCode::kTimeOut;

TEST_F(PortableTransferTest, MakesEveryCallInOrderAndSaysWhatFails) {
    using Texts = std::vector<std::string>;
    const std::string exist = "exist 1 A TESTFILE.$$$";
    const std::string up1 = R"(upload1 1 A TESTFILE.$$$ C:\TESTFIL2.$$$)";
    const std::string name = R"(name C:\TESTFIL2.$$$)";
    const std::string down1 = "download1 1 A /lot.txt RECEPT.TXT";
    struct Case {
        const char* what;
        void (PortableTransfer::*operation)(PortableTransferView&);
        TransferCode exists, off, begun, on;
        std::deque<TransferCode> packets;
        Texts calls, messages;
    };
    const auto up = &PortableTransfer::upload;
    const auto down = &PortableTransfer::download;
    const Case cases[] = {
        {"upload",
         up,
         kOk,
         kOk,
         kOk,
         kOk,
         {kMore, kOk},
         {exist, "off 1 A", up1, name, "upload2", "upload2", "on 1 A"},
         {"Succesfull"}},
        {"not there", up, kBad, kOk, kOk, kOk, {}, {exist}, {"File doesn't exist on portable !"}},
        {"the end shows how power saving was switched off",
         up,
         kOk,
         kBad,
         kOk,
         kOk,
         {kMore, kOk},
         {exist, "off 1 A", up1, name, "upload2", "upload2", "on 1 A"},
         {"Powersave off, error: Time out", "Time out"}},
        {"upload refused",
         up,
         kOk,
         kOk,
         kBad,
         kBad,
         {},
         {exist, "off 1 A", up1, name, "on 1 A"},
         {"Upload1: Time out", "Powersave on, error: Time out"}},
        {"download",
         down,
         kBad,
         kOk,
         kOk,
         kOk,
         {kMore, kMore, kOk},
         {"off 1 A", down1, "download2", "download2", "download2", "on 1 A"},
         {"Succesfull"}},
        {"a failure among the packets",
         down,
         kOk,
         kOk,
         kOk,
         kOk,
         {kMore, kBad},
         {"off 1 A", down1, "download2", "download2", "on 1 A"},
         {"Succesfull"}},
        {"download refused",
         down,
         kOk,
         kBad,
         kBad,
         kOk,
         {},
         {"off 1 A", down1, "on 1 A"},
         {"Powersave off, error: Time out", "Download1 Time out"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        library.exists = c.exists;
        library.powerOff = c.off;
        library.begun = c.begun;
        library.powerOn = c.on;
        library.packets = c.packets;
        library.calls.clear();
        world.dialogs.shown.clear();
        (transfer.*c.operation)(view);
        EXPECT_THAT(library.calls, ElementsAreArray(c.calls));
        EXPECT_THAT(world.dialogs.texts(), ElementsAreArray(c.messages));
        EXPECT_FALSE(view.barVisible);
    }
}

TEST_F(PortableTransferTest, CountsAndBarFollowThePackets) {
    library.packets = {kMore, kMore, kOk};
    library.storedName = R"(C:\TESTFIL3.$$$)";
    transfer.upload(view);
    EXPECT_EQ(view.shown, R"(C:\TESTFIL3.$$$;100/1 200/2 300/3 )");
    EXPECT_THAT(view.bar, ElementsAre(0, 100, 200, 300));
    library.totalSize = 100;
    transfer.download(view);
    EXPECT_THAT(view.bar, ElementsAre(100, 100));
    library.calls.clear();
    world.dialogs.chosenFile.clear();
    transfer.download(view);
    EXPECT_TRUE(library.calls.empty()) << "no file was chosen";
}

TEST_F(PortableTransferTest, ShowsTheParametersThatTheLibraryKeeps) {
    transfer.set(view, LineParameter::kEscDelay, "12abc");
    EXPECT_EQ(view.shown, "v214 T3 N2 E12");
    view.shown.clear();
    transfer.set(view, LineParameter::kNakDelay, "7.6");
    transfer.set(view, LineParameter::kTimeOut, "101");
    EXPECT_EQ(view.shown, "v214 T3 N8 E12v214 T100 N8 E12");
    transfer.openPort();
    transfer.unload();
    EXPECT_THAT(library.calls, ElementsAre("open 1 9600 8 0 1", "close 1"));
}

TEST_F(PortableTransferTest, TheTestFileHas450RecordsOf256Bytes) {
    transfer.createTestFile(view);
    const std::string& file = world.files.files[R"(C:\TESTFILE.$$$)"];
    const std::string record = std::string("\xFA\0", 2) + std::string(250, 'x') + std::string(4, 0);
    ASSERT_EQ(file.size(), 450U * 256U);
    for (std::size_t at = 0; at < file.size(); at += 256)
        ASSERT_EQ(file.compare(at, 256, record), 0) << at;
    EXPECT_EQ(view.bar.front(), 450);
    EXPECT_EQ(view.bar.back(), 450);
    EXPECT_EQ(view.bar.size(), 451U);
    world.files.diskFull = true;
    EXPECT_EQ(testing::errorOf([&] { transfer.createTestFile(view); }), error_number::kDiskFull);
    EXPECT_FALSE(view.barVisible);
}

}  // namespace
}  // namespace kalvo
