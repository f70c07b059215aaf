// The windows of the tray: menu, about box, replay window.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <string>
#include <vector>

#include "platform/qt/qt_text.h"
#include "tests/support/fake_platform.h"
#include "text/ansi_text.h"
#include "transfer/file_replay_window.h"
#include "tray/about_window.h"
#include "tray/menu_window.h"
#include "tray/stop_window.h"
#include "tray/transfer_window.h"

namespace kalvo {
namespace {

class FakeForeground : public ForegroundWindow {
public:
    std::string log;
    void remember() override { log += 'r'; }
    void giveBack() override { log += 'g'; }
    bool foreign() override { return true; }
};

void moveOver(QWidget* widget) {
    const QPointF middle = QRectF(widget->rect()).center();
    QMouseEvent move(QEvent::MouseMove, middle, widget->mapToGlobal(middle), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}

struct MenuWindowTest : ::testing::Test {
    FakeForeground foreground;
    std::vector<MenuEntry> chosen;
    MenuWindow menu{foreground,
                    [this](MenuEntry entry) {
                        EXPECT_FALSE(menu.isVisible());
                        chosen.push_back(entry);
                    },
                    [](MenuEntry entry) { return entry != MenuEntry::kTransfer; }};

    [[nodiscard]] QLabel* label(int index) const {
        return menu.findChild<QLabel*>("LblMenu" + QString::number(index));
    }
    [[nodiscard]] std::string highlighted() const {
        std::string entries;
        for (int i = 0; i < 6; ++i)
            if (label(i)->palette().color(QPalette::WindowText) == Qt::white)
                entries += static_cast<char>('0' + i);
        return entries;
    }
};

TEST_F(MenuWindowTest, HighlightsOneEntryAndGivesTheFocusBackBeforeTheChoice) {
    menu.popUp();
    const QScreen& screen = *QApplication::primaryScreen();
    EXPECT_EQ(menu.geometry().right(), screen.geometry().right() - 20);
    EXPECT_EQ(menu.geometry().bottom(), screen.availableGeometry().bottom());
    EXPECT_EQ(label(0)->text(), QString::fromUtf8("   Paramétrage"));
    EXPECT_EQ(label(2)->palette().color(QPalette::WindowText), Qt::gray) << "would do nothing";
    moveOver(label(1));
    moveOver(label(4));
    EXPECT_EQ(highlighted(), "4");
    moveOver(menu.findChild<QLabel*>("picIco2"));
    EXPECT_EQ(highlighted(), "2");
    QTest::mouseClick(label(3), Qt::LeftButton);
    EXPECT_EQ(foreground.log, "rg");

    // The same with the keyboard alone.
    menu.popUp();
    EXPECT_EQ(highlighted(), "");
    QTest::keyClick(&menu, Qt::Key_Return);
    EXPECT_TRUE(menu.isVisible());
    for (const int key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Return})
        QTest::keyClick(&menu, static_cast<Qt::Key>(key));
    EXPECT_EQ(chosen, (std::vector<MenuEntry>{MenuEntry::kOrder, MenuEntry::kQuit}));
    menu.popUp();
    QTest::keyClick(&menu, Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(foreground.log, "rgrgrg");
}

TEST_F(MenuWindowTest, ClosesByItselfOnceNobodyUsesIt) {
    menu.popUp();
    QCursor::setPos(0, 0);
    QTest::qWait(700);
    EXPECT_TRUE(menu.isVisible()) << "it is still the active window";
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !menu.isVisible(); }, 2000));
}

TEST_F(MenuWindowTest, StaysWhereThereIsNoNotificationArea) {
    menu.stay("Pourquoi");
    menu.makeWay();
    menu.popUp();
    menu.close();
    EXPECT_TRUE(menu.isVisible());
}

TEST(AboutWindow, NamesTheProgramItsVersionAndTheLicences) {
    AboutWindow about("1.2.3");
    const auto text = [&](const char* name) { return about.findChild<QLabel*>(name)->text(); };
    EXPECT_TRUE(text("lblTitle").contains("KALVO Horizon"));
    EXPECT_TRUE(text("lblTitle").contains("1.2.3"));
    about.show();
    QTest::keyClick(&about, Qt::Key_Return);
    EXPECT_EQ(about.result(), QDialog::Accepted);
}

TEST(TransferWindow, EscapeAndTheButtonStop) {
    int stops = 0;
    TransferWindow window([&] { ++stops; });
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    window.show();
    window.findChild<QPushButton*>("CmdArreter")->click();
    EXPECT_EQ(stops, 2);
    EXPECT_FALSE(window.isVisible());
}

TEST(FileReplayWindow, StaysOpenUntilItIsCompleteAndClosesBeforeTheReplay) {
    testing::FakePlatform world;
    ScenarioRun run;
    world.dialogs.chosenFile = world.folder / "lot é.txt"_ansi.data();
    std::string order;
    auto* const window = new FileReplayWindow(
        ReplayForm(world.platform, run), [](const std::function<void()>& handler) { handler(); },
        [&] { order += "way"; });
    window->show();
    const auto trigger = [&](const char* bar, int index) {
        window->findChild<QWidget*>(bar)->actions().at(index)->trigger();
    };
    trigger("TlbConnect", 0);
    trigger("tlbOuvrir", 0);
    EXPECT_EQ(window->findChild<QLineEdit*>("txtFic")->text(), toQString(world.dialogs.chosenFile));
    trigger("TlbConnect", 0);
    EXPECT_EQ(world.dialogs.shown.size(), 2U);
    EXPECT_TRUE(window->isVisible());
    window->findChild<QLineEdit*>("txtSep")->setText(";");
    trigger("TlbConnect", 0);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(order, "way");
    EXPECT_EQ(world.dialogs.shown.back().text, "Le fichier n'existe pas");
}

TEST(StopWindow, ComesUpWhileSomethingIsTypedAndStopsIt) {
    bool typing = true;
    StopWindow window([&] { return typing; }, [&] { typing = false; });
    window.begin();
    EXPECT_FALSE(window.isVisible()) << "not for a moment's typing";
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.isVisible(); }));
    EXPECT_FALSE(window.isActiveWindow());
    window.findChild<QPushButton*>("CmdArreterSaisie")->click();
    EXPECT_FALSE(typing);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
}

}  // namespace
}  // namespace kalvo
