// The windows of the settings, driven through the names of their controls.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <string>

#include "editor/access_lock.h"
#include "editor/windows/settings_window.h"
#include "platform/qt/qt_text.h"
#include "tests/editor/editor_site.h"
#include "tests/support/error_of.h"

namespace kalvo {
namespace {

using ::testing::ElementsAre;

struct SettingsWindowTest : ::testing::Test, testing::EditorSite {
    QPointer<SettingsWindow> window;
    AccessLock lock;
    std::vector<std::string> devices = {"", "/dev/ttyUSB0"};

    SettingsWindowTest() { lock.accessLevel = 1; }
    ~SettingsWindowTest() override { delete window.data(); }

    void open() {
        const auto deliver = [this](const std::function<void()>& handler) {
            if (const int error = testing::errorOf(handler); error != 0)
                world.dialogs.message("Erreur " + std::to_string(error), "",
                                      MessageIcon::kCritical);
        };
        window = new SettingsWindow(platform, state, lock,
                                    {.deliver = deliver,
                                     .portDevices = [this] { return devices; },
                                     .showPortableTransfer = [](QWidget*) {}});
        window->show();
    }
    template <typename Widget>
    [[nodiscard]] Widget* find(const char* name) const {
        Widget* const found = window->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void showTab(int index) const { find<QTabWidget>("TabParam")->setCurrentIndex(index); }
    void press(const char* toolBar, int button) const {
        find<QWidget>(toolBar)->actions().at(button - 1)->trigger();
    }
    void pick(const char* box, const QString& row) const {
        auto* const combo = find<QComboBox>(box);
        combo->setCurrentIndex(combo->findText(row));
    }
    void doubleClick(const char* list, const QString& text) const {
        auto* const widget = find<QListView>(list);
        const auto row = rows(list).indexOf(text);
        ASSERT_GE(row, 0) << text.toStdString();
        const QModelIndex index = widget->model()->index(static_cast<int>(row), 0);
        widget->scrollTo(index);
        const QPoint at = widget->visualRect(index).center();
        QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(widget->viewport(), Qt::LeftButton, {}, at);
    }
    [[nodiscard]] QStringList rows(const char* list) const {
        QStringList texts;
        const auto* const model = find<QListView>(list)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, 0).data().toString();
        return texts;
    }
    void select(const char* list, int row) const {
        auto* const view = find<QListView>(list);
        view->setCurrentIndex(view->model()->index(row, 0));
    }
    void createScenario(const QString& name, const QString& type) const {
        showTab(4);
        press("TlbScen", 1);
        QTest::keyClicks(find<QLineEdit>("TxtNomScen"), name);
        pick("CboType", type);
        press("TlbSaveScen", 1);
    }
};

TEST_F(SettingsWindowTest, AScenarioIsBuiltWithListsAndMenu) {
    open();
    createScenario("Stock", "Emulation");
    ASSERT_TRUE(find<QWidget>("FrmActions")->isVisible());
    for (const char* key : {"&CODE", "Touche Tab", "&QTY"}) doubleClick("LstTouches", key);
    EXPECT_EQ(rows("LstChamps"), QStringList({"1  --- &CODE", "2  --- Touche Tab", "3  --- &QTY"}));

    select("LstChamps", 1);
    find<QAction>("mnuinsert")->trigger();
    EXPECT_TRUE(rows("LstChamps")[1].contains("ici"));
    doubleClick("LstTouches", "&EMP");
    select("LstChamps", 0);
    find<QAction>("mnuboucle")->trigger();
    select("LstChamps", 3);
    find<QAction>("mnusupp")->trigger();
    EXPECT_EQ(rows("LstChamps"),
              QStringList({"1  --- &CODE", "2  --- &EMP", "3  --- Touche Tab", "", "Boucle : 1"}));
    auto* const list = find<QListView>("LstChamps");
    EXPECT_FALSE(list->model()->index(4, 0).flags() & Qt::ItemIsSelectable);
    world.dialogs.inputs = {"&QTY"};
    doubleClick("LstChamps", "2  --- &EMP");
    current.scenarioNumber = 1;  // the only one
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:&QTY:0", "3:Touche Tab:0"));

    // Steps are moved with the keyboard, and Ctrl+Z takes that back from any pane.
    auto* const steps = find<QWidget>("frmEtapes");
    steps->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(steps));
    list->setFocus();
    select("LstChamps", 2);
    QTest::keyClick(list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:Touche Tab:0", "3:&QTY:0"));
    QTest::keyClick(list, Qt::Key_F6);
    EXPECT_TRUE(find<QListView>("LstTouches")->hasFocus());
    QTest::keyClick(find<QListView>("LstTouches"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(storedActions(), ElementsAre("1:&CODE:0", "2:&QTY:0", "3:Touche Tab:0"));

    // The preview follows, and the last frame received may be its sample, once there is one.
    find<QPushButton>("CmdDerniereTrame")->click();
    EXPECT_EQ(find<QPlainTextEdit>("TxtScript")->toPlainText(), "REF00112{TAB}");
    EXPECT_EQ(rows("LstFrappe"), QStringList({"Texte : REF00112", "Tab"}));
    state.ReceivedData = "Z\r9\r\n";
    find<QPushButton>("CmdDerniereTrame")->click();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return find<QPlainTextEdit>("TxtScript")->toPlainText() == "Z9{TAB}"; }, 2000));

    find<QWidget>("frmEtapes")->close();
    EXPECT_FALSE(find<QWidget>("FrmActions")->isVisible());
    EXPECT_FALSE(find<QWidget>("FrmTest")->isVisible());
    press("TlbScenarios", 1);
    doubleClick("LstScen", "--- Stock  (en service)");
    EXPECT_TRUE(find<QWidget>("FrmTest")->isVisible());

    // The right button opens the menu when it is let go.
    auto* const menu = find<QMenu>("frmpopup");
    const QPoint at = list->visualRect(list->model()->index(0, 0)).center();
    QTest::mousePress(list->viewport(), Qt::RightButton, {}, at);
    EXPECT_FALSE(menu->isVisible());
    QTest::mouseRelease(list->viewport(), Qt::RightButton, {}, at);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(list->currentIndex().row(), 0);
    menu->close();
}

TEST_F(SettingsWindowTest, TheSettingsAreAppliedAndStayUsableAfterAnError) {
    setPort(port_serie::kPortActive, "1");
    open();
    createScenario("Stock", "Emulation");
    showTab(1);
    devices = {"/dev/ttyACM0", "/dev/ttyUSB0"};
    auto* const port = find<QComboBox>("CboPort");
    EXPECT_TRUE(QTest::qWaitFor([&] { return port->itemText(0) == "COM 1 : /dev/ttyACM0"; }, 3000))
        << "plugged in while the page is open";
    pick("CboPort", "COM 2 : /dev/ttyUSB0");
    for (const auto& [box, row] : {std::pair{"CboVitesse", "9600"},
                                   {"CboDonnées", "8"},
                                   {"CboParité", "Aucune"},
                                   {"CboArret", "1"},
                                   {"CboFlux", "Aucun"}})
        EXPECT_EQ(find<QComboBox>(box)->currentText(), row) << "chosen along with the first port";
    pick("CboProtocol", "HT630");
    press("TlbPrpp", 1);
    EXPECT_EQ(world.dialogs.texts().back(), "Erreur 13") << "the terminal type is no speed";
    ASSERT_TRUE(window->isVisible());

    showTab(0);
    pick("CboChoix", "Stock");
    pick("CboCde", "Stock");
    find<QLineEdit>("txtSep")->selectAll();
    QTest::keyClicks(find<QLineEdit>("txtSep"), ",");
    press("TlbConnect", 1);
    EXPECT_TRUE(find<QLabel>("LblEtat")->text().startsWith("Configuration enregistrée. COM 2"));
    EXPECT_TRUE(world.port.open);
    EXPECT_EQ(state.TerminalType, "HT630");
    EXPECT_EQ(readSetting(world.registry, kRacScenChx), "Stock");
    EXPECT_EQ(readSetting(world.registry, kRacCde), "Stock");
    EXPECT_EQ(readSetting(world.registry, kSepDec), ",");
    const std::size_t shown = world.dialogs.shown.size();
    press("TlbConnect", 2);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(world.dialogs.shown.size(), shown) << "nothing was left to ask about";
    EXPECT_EQ(lock.accessLevel, 0);
}

TEST_F(SettingsWindowTest, UnsavedChangesAreAskedAbout) {
    const std::string former = "Placefrmparametrage";  // where releases before kept it
    writeSetting(world.registry, former, "x");
    using Change = std::function<void()>;
    for (const Change& change :
         {Change([&] { QTest::keyClicks(find<QLineEdit>("systemKey3"), "x"); }),
          Change([&] { QTest::keyClicks(find<QLineEdit>("txtSep"), ";"); }), Change([&] {
              createScenario("Stock", "Fichier");
              find<QWidget>("frmEtapes")->close();
              EXPECT_TRUE(find<QLineEdit>("TxtNomScen")->isReadOnly());
              EXPECT_FALSE(find<QComboBox>("CboType")->isEnabled());
              EXPECT_FALSE(find<QCheckBox>("ChcPartiel")->isEnabled());
              find<QCheckBox>("chkIncrement")->click();
          }),
          Change([&] {
              for (const auto& [box, row] :
                   {std::pair{"CboPort", "COM 2 : /dev/ttyUSB0"}, {"CboProtocol", "HT630"}})
                  pick(box, row);
              press("TlbPrpp", 1);
              EXPECT_EQ(world.dialogs.texts().back(), "Erreur 13");
          })}) {
        delete window.data();
        lock.accessLevel = 1;
        open();
        change();
        const std::size_t shown = world.dialogs.shown.size();
        press("TlbConnect", 2);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(world.dialogs.shown.size(), shown + 1);
    }
    EXPECT_EQ(world.dialogs.texts().back(),
              std::string("Des modifications ne sont pas enregistrées. "
                          "Fermer sans les enregistrer ?"_ansi));
    world.dialogs.confirmations = {true};
    window->close();
    EXPECT_FALSE(window->isVisible());

    // Keys are renamed, and the window comes back as large as it was.
    std::filesystem::remove(portSerieIni(folder.path()));
    delete window.data();
    lock.accessLevel = 1;
    open();
    window->resize(900, 640);
    showTab(2);
    find<QLineEdit>("keys0")->setText("{Neuf}");
    press("TlbPart", 1);
    EXPECT_FALSE(window->isVisible()) << toUtf8(world.dialogs.shown.back().text);
    EXPECT_EQ(ReadIniValue(profiles, folder / "Touche.ini", "Particuliere", " 0"), "{Neuf}@200");
    delete window.data();
    open();
    EXPECT_EQ(window->size(), QSize(900, 640));
    EXPECT_FALSE(world.registry.query(RegistryRoot::kCurrentUser, kSettingsKey, former));
}

TEST_F(SettingsWindowTest, WithoutPasswordOnlyConnectionAndPortCanBeUsed) {
    lock.accessLevel = 0;
    open();
    const auto usable = [this] {
        std::string tabs;
        for (int tab = 0; tab < 5; ++tab)
            tabs += find<QTabWidget>("TabParam")->isTabEnabled(tab) ? '1' : '0';
        return tabs;
    };
    EXPECT_EQ(usable(), "11000");
    lock.accessLevel = 1;
    window->showAccess();
    EXPECT_EQ(usable(), "11111");
}

TEST_F(SettingsWindowTest, AFileScenarioStoresItsPathWhenTheBoxIsLeft) {
    open();
    createScenario("Fic", "Fichier");
    EXPECT_TRUE(find<QWidget>("FraChemin")->isVisible());
    find<QLineEdit>("TxtChemin")->setFocus();
    QTest::keyClicks(find<QLineEdit>("TxtChemin"), "C:\\lot.txt");
    EXPECT_EQ(readScenario(*state.database, 1)->Chemin, "");
    QTest::keyClick(find<QLineEdit>("TxtChemin"), Qt::Key_Return);
    EXPECT_EQ(readScenario(*state.database, 1)->Chemin, "C:\\lot.txt");
    world.dialogs.inputs = {"0"};
    find<QCheckBox>("ChcPartiel")->click();
    EXPECT_FALSE(find<QCheckBox>("ChcPartiel")->isChecked());
}

}  // namespace
}  // namespace kalvo
