// The toolkit's bindings: event pump, dialogs, progress window, single instance.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <string>
#include <thread>
#include <vector>

#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_progress.h"
#include "platform/qt/qt_text.h"

namespace kalvo {
namespace {

// Does something to the modal window that is about to open.
template <typename Window, typename Action>
void whenOpen(Action action) {
    QTimer::singleShot(0, [action] {
        auto* const window = qobject_cast<Window*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        action(*window);
    });
}

struct QtPump : ::testing::Test {
    std::vector<int> errors;
    QtEventPump pump{[this](const RuntimeError& error) { errors.push_back(error.number()); }};
};

TEST_F(QtPump, TheEndUnwindsNestedHandlersAndTheLoopAndNoWindowCanRefuseIt) {
    struct Stubborn : QWidget {
        void closeEvent(QCloseEvent* event) override { event->ignore(); }
    } window;
    window.show();
    std::string log;
    const auto ending = [&] {
        pump.post([&] {
            pump.requestEnd();
            pump.DoEvents();
            log += "never";
        });
        pump.DoEvents();
        log += "never";
    };
    std::thread([&] { pump.post(ending); }).join();
    pump.run();
    EXPECT_EQ(log, "");
    EXPECT_TRUE(errors.empty());
    EXPECT_THROW(pump.DoEvents(), ProgramEnd);
}

TEST_F(QtPump, DrawingDeliversNothingOfTheProgramAndLosesNothing) {
    std::string log;
    pump.post([&] { log += "a"; });
    pump.draw();
    EXPECT_EQ(log, "");
    pump.DoEvents();
    EXPECT_EQ(log, "a");
}

TEST_F(QtPump, PollingItForeverRests) {
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    while (timer.elapsed() < 300) pump.DoEvents();
    EXPECT_LT(static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC, 0.15);
}

TEST(QtDialogs, ShowPlainTextAndAnswerNoByDefault) {
    QtDialogs dialogs;
    QString shown;
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        shown = box.text();
        QTest::keyClick(&box, Qt::Key_Enter);
    });
    EXPECT_FALSE(dialogs.confirm("<b>Effacer ?\r\nTout"_ansi, "Titre", MessageIcon::kQuestion));
    EXPECT_EQ(shown, QString::fromUtf8("<b>Effacer ?\nTout"));

    whenOpen<QMessageBox>([](QMessageBox& box) {
        for (QAbstractButton* button : box.buttons())
            if (button->text() == "&Oui") button->click();
    });
    EXPECT_TRUE(dialogs.confirm("?", "Titre", MessageIcon::kQuestion));
}

TEST(QtDialogs, AnInputGivesItsTextOrNothing) {
    QtDialogs dialogs;
    whenOpen<QInputDialog>([](QInputDialog& input) {
        EXPECT_EQ(input.labelText(), "Valeur de &&CODE") << "no shortcut";
        EXPECT_GT(input.width(), input.fontMetrics().horizontalAdvance(input.windowTitle()) * 2);
        input.setTextValue(input.textValue() + QString::fromUtf8("é€"));
        input.accept();
    });
    EXPECT_EQ(dialogs.inputBox("Valeur de &CODE", "Un titre bien plus long", "x"),
              std::string("xé€"_ansi));
    whenOpen<QInputDialog>([](QInputDialog& input) { input.reject(); });
    EXPECT_EQ(dialogs.inputBox("Nom", "Titre", "x"), std::nullopt);
}

TEST(QtProgress, ShowsLabelAndBarAndStartsAfresh) {
    QtProgress progress([] {});
    progress.setLabel("Préparation"_ansi);
    progress.show();
    progress.setValue(250);
    QWidget* window = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == "frmProgress") window = top;
    ASSERT_NE(window, nullptr);
    const auto* const bar = window->findChild<QProgressBar*>("ProgressBar1");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(bar->value(), 100);
    EXPECT_EQ(window->findChild<QLabel*>("Label1")->text(), QString::fromUtf8("Préparation"));
    progress.unload();
    progress.show();
    EXPECT_EQ(bar->value(), 0);
}

}  // namespace
}  // namespace kalvo
