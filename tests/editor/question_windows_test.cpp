// The small windows that ask before others open.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <string>

#include "editor/access_lock.h"
#include "editor/windows/erase_window.h"
#include "editor/windows/login_window.h"
#include "editor/windows/port_choice_window.h"
#include "settings/serial_settings.h"
#include "tests/support/fake_platform.h"

namespace kalvo {
namespace {

TEST(LoginWindow, TriesAgainUntilThePasswordIsRight) {
    testing::FakePlatform world;
    AccessLock lock;
    LoginWindow login(world.platform, lock);
    login.show();
    login.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&login));
    auto* const box = login.findChild<QLineEdit*>("txtPassword");
    for (const char* wrong : {"", "PLMOKNIJB842", "plmoknijb842 ", "plmoknijb84"}) {
        QTest::keyClicks(box, wrong);
        login.findChild<QWidget*>("TlbPrpp")->actions().at(0)->trigger();
        EXPECT_EQ(world.dialogs.shown.back().text, "Mot de passe non valide !");
        EXPECT_EQ(toUtf8(world.dialogs.shown.back().title), "Autorisation <-> Paramétrage");
        EXPECT_EQ(box->text(), "");
        EXPECT_TRUE(box->hasFocus() && login.isVisible());
        EXPECT_EQ(lock.accessLevel, 0) << wrong;
    }
    QTest::keyClicks(box, "plmoknijb842");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(login.result(), QDialog::Accepted);
    EXPECT_EQ(lock.accessLevel, 1);
}

TEST(EraseWindow, AnswersNoUnlessYesIsPressed) {
    std::string answers;
    EraseWindow question([&](bool erase) { answers += erase ? 'o' : 'n'; });
    EXPECT_EQ(question.windowTitle(), "KALVO Horizon");
    EXPECT_EQ(question.findChild<QLabel*>("lblMessage")->text(),
              "Voulez-vous effacer les données du terminal ?");
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        question.show();
        QTest::keyClick(&question, static_cast<Qt::Key>(key));
    }
    question.show();
    question.close();
    question.show();
    question.findChild<QPushButton*>("CmdOK")->click();
    question.show();
    QTest::keyClick(&question, Qt::Key_Return);
    EXPECT_EQ(answers, "nnnon") << "whatever was answered before";
}

TEST(PortChoiceWindow, StoresTheChosenPort) {
    testing::FakePlatform world;
    PortChoiceWindow choice(world.profiles, world.folder.path(), world.port, {"/dev/ttyS0"}, 1);
    auto* const box = choice.findChild<QComboBox*>("CboChoix");
    EXPECT_EQ(choice.windowTitle(), "Problème d'ouverture du port Com");
    EXPECT_EQ(box->itemText(0), "COM 1 : /dev/ttyS0");
    EXPECT_EQ(box->count(), 20);
    auto* const ok = choice.findChild<QPushButton*>("CmdOK");
    for (const int row : {9, 19}) {
        EXPECT_FALSE(box->model()->index(row, 0).flags() & Qt::ItemIsEnabled);
        box->setCurrentIndex(row);
        EXPECT_FALSE(ok->isEnabled()) << "it would be stored as port 1";
    }
    box->setCurrentIndex(4);
    ok->click();
    EXPECT_EQ(choice.result(), QDialog::Accepted);
    EXPECT_EQ(readPortSerie(world.profiles, world.folder.path(), port_serie::kPort), "5");
}

}  // namespace
}  // namespace kalvo
