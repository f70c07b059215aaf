// The file transfer with a portable, through its window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/fake_multidll.h"
#include "tests/support/fake_platform.h"
#include "transfer/portable_transfer_window.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

std::string joined(const std::vector<std::string>& parts) {
    std::string all;
    for (const std::string& part : parts) all += part + "|";
    return all;
}

constexpr auto kMore = TransferCode::kUnsuccessfulOrMore;
constexpr auto kOk = TransferCode::kSuccess;
// "+" for success, "." for more to come, "-" for a failure.
TransferCode code(char sign) {
    return sign == '+' ? kOk : sign == '.' ? kMore : TransferCode::kTimeOut;
}

// Outlived by the test, which looks at what is left of it.
struct Calls : testing::FakeMultidll {
    std::vector<std::string>& log;
    std::function<bool()> breakRequested;
    Calls(std::vector<std::string>& kept, std::function<bool()> asks)
        : log(kept), breakRequested(std::move(asks)) {}
    ~Calls() override { log = calls; }
};

struct PortableWindowTest : ::testing::Test {
    testing::FakePlatform world;
    std::vector<std::string> log;
    Calls* library = nullptr;
    int lastError = 0;
    QPointer<PortableTransferWindow> window;

    PortableWindowTest() {
        world.dialogs.chosenFile = "/lot.txt";
        window = new PortableTransferWindow(
            nullptr, world.platform,
            [this](std::function<bool()> asks) {
                auto made = std::make_unique<Calls>(log, std::move(asks));
                library = made.get();
                return made;
            },
            world.folder.path(),
            [this](const std::function<void()>& handler) {
                lastError = testing::errorOf(handler);
            });
        window->show();
    }
    ~PortableWindowTest() override { delete window; }

    template <typename Widget>
    [[nodiscard]] Widget* at(const char* name) const {
        return window->findChild<Widget*>(name);
    }
    [[nodiscard]] QProgressBar& bar() const { return *at<QProgressBar>("PrgB"); }
    [[nodiscard]] std::string text(const char* name) const {
        return at<QLabel>(name)->text().toStdString();
    }
    void press(const char* name) const { QTest::mouseClick(at<QPushButton>(name), Qt::LeftButton); }
    [[nodiscard]] bool gone() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    }
    // Does something "meanwhile", at the given packet.
    void atPacket(int number, std::function<void()> what) const {
        library->packets.assign(50, kMore);
        library->onPacket = [this, number, what = std::move(what)] {
            if (std::count_if(library->calls.begin(), library->calls.end(),
                              [](const std::string& call) { return call.back() == '2'; }) == number)
                what();
        };
    }
};

TEST_F(PortableWindowTest, MakesEveryCallInOrderAndSaysWhatFails) {
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
        library->exists = code(c.answers[0]);
        library->powerOff = code(c.answers[1]);
        library->begun = code(c.answers[2]);
        library->powerOn = code(c.answers[3]);
        for (const char* packet = c.packets; *packet != 0; ++packet)
            library->packets.push_back(code(*packet));
        library->calls.clear();
        world.dialogs.shown.clear();
        press(*c.what == 'u' ? "cmdUpload" : "cmdDownload");
        EXPECT_EQ(joined(library->calls), c.calls) << c.what;
        EXPECT_EQ(joined(world.dialogs.texts()), c.messages) << c.what;
        EXPECT_FALSE(bar().isVisible()) << c.what;
    }
    library->calls.clear();
    world.dialogs.chosenFile.clear();
    press("cmdDownload");
    EXPECT_TRUE(library->calls.empty()) << "no file was chosen";
}

TEST_F(PortableWindowTest, ShowsWhatTheLibraryKeeps) {
    EXPECT_EQ(window->windowTitle(), "Communication HT630");
    EXPECT_EQ(text("lblVersion"), "DLL Version: 214");
    for (const auto& [name, typed, kept] : {std::tuple{"NakDelay", "500 ms", "100"},
                                            {"TimeOut", "7.6", "8"},
                                            {"EscDelay", "12abc", "12"}}) {
        auto* const box = at<QLineEdit>(("txt" + std::string(name)).c_str());
        box->setText(typed);
        if (*name == 'T')
            QTest::keyClick(box, Qt::Key_Return);
        else
            press(("cmd" + std::string(name)).c_str());
        EXPECT_EQ(box->text(), kept);
    }
    EXPECT_EQ(library->timeOut * 10000 + library->nakDelay * 100 + library->escDelay, 90012);
    press("cmdOpen");
    EXPECT_THAT(library->calls, ElementsAre("open 1 9600 8 0 1"));
}

TEST_F(PortableWindowTest, FollowsATransferAndLetsNothingElseBegin) {
    std::string seen;
    library->packets = {kMore, kMore, kOk};
    library->storedName = R"(C:\TESTFIL3.$$$)";
    library->onPacket = [&] {
        seen += std::to_string(bar().value()) + "/" + std::to_string(bar().maximum()) + " ";
    };
    press("cmdUpload");
    EXPECT_EQ(seen, "0/0 100/0 200/0 ");
    EXPECT_NE(text("lblUploaded").find("TESTFIL3"), std::string::npos);
    EXPECT_EQ(text("lblBytes") + text("lblPackets"), "Bytes: 300Packets: 3");

    library->calls.clear();
    world.dialogs.shown.clear();
    atPacket(2, [this] {
        EXPECT_EQ(text("lblBytes"), "Bytes: 100");
        EXPECT_EQ(bar().value(), 100);
        EXPECT_EQ(bar().maximum(), 300);
        EXPECT_TRUE(bar().isVisible());
        for (const char* name :
             {"cmdOpen", "cmdUpload", "cmdDownload", "cmdCreate", "cmdNakDelay", "cmdClose"})
            press(name);
        library->packets.clear();
    });
    press("cmdDownload");
    EXPECT_EQ(text("lblBytes") + text("lblPackets"), "Bytes: 200Packets: 2");
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(joined(library->calls),
              "off 1 A|download1 1 A /lot.txt RECEPT.TXT|download2|download2|on 1 A|");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Succesfull"));
    EXPECT_TRUE(at<QPushButton>("cmdOpen")->isEnabled());
}

TEST_F(PortableWindowTest, EscapeTheButtonAndClosingBreakOff) {
    const std::vector<std::pair<const char*, std::function<void()>>> ways = {
        {"button", [this] { press("cmdBreak"); }},
        {"Escape", [this] { QTest::keyClick(window, Qt::Key_Escape); }},
        {"closing", [this] { EXPECT_FALSE(window->close()); }},
    };
    for (const auto& [name, way] : ways) {
        SCOPED_TRACE(name);
        world.dialogs.shown.clear();
        library->calls.clear();
        atPacket(3, way);
        press("cmdUpload");
        EXPECT_THAT(world.dialogs.texts(), ElementsAre("User press ESC to break"));
        // One more packet for a library that wants to tell the terminal.
        EXPECT_EQ(std::count(library->calls.begin(), library->calls.end(), "upload2"), 4);
    }
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(gone());
    EXPECT_EQ(log.back(), "close 1");
    EXPECT_EQ(log.at(log.size() - 2), "on 1 A");
}

TEST_F(PortableWindowTest, ABreakDuringAWaitIsSaidOnce) {
    world.events.whilePumping = [this] { QTest::keyClick(window, Qt::Key_Escape); };
    library->onPacket = [this] { EXPECT_TRUE(library->breakRequested()); };
    library->packets = {TransferCode::kUserBreak};
    press("cmdUpload");
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("User press ESC to break"));
    EXPECT_TRUE(window->isVisible());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(gone());
}

TEST_F(PortableWindowTest, TheTestFileHas450RecordsOf256Bytes) {
    world.files.moved = {R"(C:\TESTFILE.$$$)", world.folder / "test"};
    press("cmdCreate");
    const std::string file = world.content("test");
    const std::string record = std::string("\xFA\0", 2) + std::string(250, 'x') + std::string(4, 0);
    ASSERT_EQ(file.size(), 450U * 256U);
    for (std::size_t at = 0; at < file.size(); at += 256)
        ASSERT_EQ(file.compare(at, 256, record), 0) << at;
    EXPECT_EQ(bar().maximum(), 450);
    EXPECT_EQ(bar().value(), 450);
    world.files.diskFull = true;
    press("cmdCreate");
    EXPECT_EQ(lastError, error_number::kDiskFull);
    EXPECT_FALSE(bar().isVisible());
}

}  // namespace
}  // namespace kalvo
