#include "transfer/portable_transfer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/fake_multidll.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

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

std::string joined(const std::vector<std::string>& parts) {
    std::string all;
    for (const std::string& part : parts) all += part + "|";
    return all;
}

constexpr auto kOk = TransferCode::kSuccess;
constexpr auto kMore = TransferCode::kUnsuccessfulOrMore;
// "+" for success, "." for more to come, "-" for a failure.
TransferCode code(char sign) {
    return sign == '+' ? kOk : sign == '.' ? kMore : TransferCode::kTimeOut;
}

TEST_F(PortableTransferTest, MakesEveryCallInOrderAndSaysWhatFails) {
    const std::string up1 = R"(upload1 1 A TESTFILE.$$$ C:\TESTFIL2.$$$|name C:\TESTFIL2.$$$|)";
    const std::string up = "exist 1 A TESTFILE.$$$|off 1 A|" + up1;
    const std::string down = "off 1 A|download1 1 A /lot.txt RECEPT.TXT|";
    struct Case {
        const char* what;
        // What the library answers: whether the file exists, to power saving off, to the
        // beginning, to power saving on; and to each packet.
        const char *answers, *packets;
        std::string calls, messages;
    };
    for (const Case& c : {
             Case{"upload", "++++", ".+", up + "upload2|upload2|on 1 A|", "Succesfull|"},
             Case{"upload, not there", "-+++", "", "exist 1 A TESTFILE.$$$|",
                  "File doesn't exist on portable !|"},
             Case{"upload, whose end shows how power saving was switched off", "+-++", ".+",
                  up + "upload2|upload2|on 1 A|", "Powersave off, error: Time out|Time out|"},
             Case{"upload refused", "++--", "", up + "on 1 A|",
                  "Upload1: Time out|Powersave on, error: Time out|"},
             Case{"download", "-+++", "..+", down + "download2|download2|download2|on 1 A|",
                  "Succesfull|"},
             Case{"download, a failure among the packets", "++++", ".-",
                  down + "download2|download2|on 1 A|", "Succesfull|"},
             Case{"download refused", "+--+", "", down + "on 1 A|",
                  "Powersave off, error: Time out|Download1 Time out|"},
         }) {
        library.exists = code(c.answers[0]);
        library.powerOff = code(c.answers[1]);
        library.begun = code(c.answers[2]);
        library.powerOn = code(c.answers[3]);
        for (const char* packet = c.packets; *packet != 0; ++packet)
            library.packets.push_back(code(*packet));
        library.calls.clear();
        world.dialogs.shown.clear();
        (*c.what == 'u') ? transfer.upload(view) : transfer.download(view);
        EXPECT_EQ(joined(library.calls), c.calls) << c.what;
        EXPECT_EQ(joined(world.dialogs.texts()), c.messages) << c.what;
        EXPECT_FALSE(view.barVisible) << c.what;
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
    world.files.moved = {R"(C:\TESTFILE.$$$)", world.folder / "test"};
    transfer.createTestFile(view);
    const std::string file = world.content("test");
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
