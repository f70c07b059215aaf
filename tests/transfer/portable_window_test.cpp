// The window of the file transfer with a portable.
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
#include <vector>

#include "tests/support/fake_multidll.h"
#include "tests/support/fake_platform.h"
#include "transfer/portable_transfer_window.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

constexpr auto kMore = TransferCode::kUnsuccessfulOrMore;

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
            "/app", [](const std::function<void()>& handler) { handler(); });
        window->show();
    }
    ~PortableWindowTest() override { delete window; }

    template <typename Widget>
    [[nodiscard]] Widget* at(const char* name) const {
        return window->findChild<Widget*>(name);
    }
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

TEST_F(PortableWindowTest, ShowsWhatTheLibraryKeeps) {
    EXPECT_EQ(window->windowTitle(), "Communication HT630");
    EXPECT_EQ(text("lblVersion"), "DLL Version: 214");
    auto* const delay = at<QLineEdit>("txtNakDelay");
    delay->setText("500 ms");
    press("cmdNakDelay");
    EXPECT_EQ(delay->text(), "100");
    auto* const timeOut = at<QLineEdit>("txtTimeOut");
    timeOut->setText("7.6");
    QTest::keyClick(timeOut, Qt::Key_Return);
    EXPECT_EQ(library->timeOut, 8);
    EXPECT_EQ(at<QLineEdit>("txtEscDelay")->text(), "1");
}

TEST_F(PortableWindowTest, FollowsATransferAndLetsNothingElseBegin) {
    atPacket(2, [this] {
        EXPECT_EQ(text("lblBytes"), "Bytes: 100");
        EXPECT_EQ(at<QProgressBar>("PrgB")->maximum(), 300);
        EXPECT_TRUE(at<QProgressBar>("PrgB")->isVisible());
        for (const char* name :
             {"cmdOpen", "cmdUpload", "cmdDownload", "cmdCreate", "cmdNakDelay", "cmdClose"})
            press(name);
        library->packets.clear();
    });
    press("cmdDownload");
    EXPECT_EQ(text("lblBytes"), "Bytes: 200");
    EXPECT_EQ(text("lblPackets"), "Packets: 2");
    EXPECT_FALSE(at<QProgressBar>("PrgB")->isVisible());
    EXPECT_THAT(library->calls, ElementsAre("off 1 A", "download1 1 A /lot.txt RECEPT.TXT",
                                            "download2", "download2", "on 1 A"));
    EXPECT_THAT(world.dialogs.texts(), ElementsAre("Succesfull"));
    EXPECT_TRUE(at<QPushButton>("cmdOpen")->isEnabled());
}

TEST_F(PortableWindowTest, EscapeTheButtonAndClosingBreakOff) {
    const std::pair<const char*, std::function<void()>> ways[] = {
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

TEST_F(PortableWindowTest, WritesTheTestFile) {
    world.files.moved = {R"(C:\TESTFILE.$$$)", world.folder / "test"};
    press("cmdCreate");
    EXPECT_EQ(world.content("test").size(), 450U * 256U);
    EXPECT_EQ(at<QProgressBar>("PrgB")->maximum(), 450);
}

}  // namespace
}  // namespace kalvo
