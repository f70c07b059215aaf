// The window "Tableau de bord".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "dashboard/windows/dashboard_window.h"
#include "platform/libzip/zip_archive.h"
#include "platform/qt/qt_text.h"
#include "scenario/scenario_store.h"
#include "settings/application_paths.h"
#include "settings/options.h"
#include "tests/support/disk_journal.h"
#include "tests/support/site.h"
#include "text/ansi_text.h"

namespace kalvo {
namespace {

using ::testing::HasSubstr;

struct Dashboard : ::testing::Test, testing::Site {
    testing::DiskJournal file{folder.path()};
    LineTap tap{world.port, [] { return std::int64_t{1'709'647'629'123}; }};
    std::vector<std::int32_t> retyped;
    bool settingsClose = true;
    std::vector<std::string> lastTarget;
    MannerTrial trial;
    ZipArchive archive;
    std::unique_ptr<DashboardWindow> window;

    void open() {
        window = std::make_unique<DashboardWindow>(
            DashboardContext{platform,
                             state,
                             tap,
                             &file,
                             archive,
                             {.deliver = [](const std::function<void()>& handler) { handler(); },
                              .retype = [this](std::int64_t, const std::string&,
                                               std::int32_t from) { retyped.push_back(from); },
                              .lineBusy = [] { return false; },
                              .closeSettings = [this] { return settingsClose; },
                              .reopenPort = [] {},
                              .lastTarget = [this] { return lastTarget; },
                              .tryManners = [this] { return std::optional(trial); }}});
        window->show();
    }
    template <typename Widget>
    [[nodiscard]] Widget* find(const char* name) const {
        return window->findChild<Widget*>(name);
    }
};

TEST_F(Dashboard, ShowsBatchesAndActsOnTheSelectedOne) {
    state.scenario.active.ScenarioName = "Stock";
    state.scenario.active.ActionLines = {"", "&REF", "{TAB}", "&QTE", "~"};
    const BatchOrigin origin{3, "HT630", "Stock"};
    file.append({"2024-03-05 14:07:09", origin, BatchState::kReceived, 2, ""}, "R1\r\n12\r\n", 0);
    file.append({"2024-03-05 15:00:00", origin, BatchState::kFailed, 2, "pas d'affichage"},
                "R2\r\n5\r\n", 0);
    open();
    auto* const table = find<QTableView>("TblLots");
    auto* const fields = find<QListView>("LstChampsLot")->model();
    ASSERT_EQ(table->model()->rowCount(), 2);
    EXPECT_EQ(fields->index(0, 0).data().toString(), "1 : R2");
    table->selectRow(1);
    EXPECT_EQ(fields->index(0, 0).data().toString(), "1 : R1");
    EXPECT_EQ(find<QListView>("LstFrappe")->model()->index(1, 0).data().toString(),
              "    Texte : R1");
    find<QPushButton>("CmdCopier")->click();
    EXPECT_EQ(QApplication::clipboard()->text(), "R1\n12\n");
    QTest::keyClick(find<QPushButton>("CmdRetaper"), Qt::Key_Return);
    EXPECT_EQ(retyped, std::vector<std::int32_t>{1});

    file.append({"2024-03-05 16:00:00", origin, BatchState::kReceived, 1, ""}, "R3\r\n", 0);
    window->refresh();
    EXPECT_EQ(table->model()->rowCount(), 3);
    EXPECT_EQ(table->currentIndex().row(), 2) << "the same batch";
    find<QComboBox>("CboEtat")->setCurrentText(QString::fromUtf8("échec"));
    EXPECT_EQ(table->model()->rowCount(), 1);
    QTest::keyClicks(find<QLineEdit>("TxtChercher"), "nulle part");
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->model()->rowCount() == 0; }, 2000));
    EXPECT_FALSE(find<QPushButton>("CmdRetaper")->isEnabled());
    EXPECT_EQ(find<QLabel>("LblNombre")->text(), "Aucun lot ne correspond.");
    file.damaged = true;
    window->refresh();
    EXPECT_THAT(find<QLabel>("LblNombre")->text().toStdString(), HasSubstr("ne se lit pas"));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Dashboard, ShowsTheLineAndSavesIt) {
    state.TerminalType = "HT630";
    tap.setSettings("9600,N,8,1");
    tap.setPortOpen(true);
    open();
    find<QTabWidget>("TabTableau")->setCurrentIndex(1);
    EXPECT_EQ(find<QLabel>("LblPort")->text(), "Port COM 1 ouvert, 9600,N,8,1");
    find<QPushButton>("CmdTester")->click();
    world.port.arrive("REF001\r\n");
    window->refresh();
    auto* const rows = find<QTableView>("TblLigne")->model();
    ASSERT_EQ(rows->rowCount(), 2);
    QStringList row;
    for (int column = 0; column < rows->columnCount(); ++column)
        row << rows->index(1, column).data().toString();
    EXPECT_EQ(row.join("|"),
              QString::fromUtf8("14:07:09.123|reçu|REF001<0D><0A>|52 45 46 30 30 31 0D 0A"));
    find<QPushButton>("CmdPause")->click();
    world.port.arrive("REF002\r\n");
    window->refresh();
    EXPECT_EQ(rows->rowCount(), 2) << "paused";
    world.dialogs.chosenFile = folder / "ligne.txt";
    find<QPushButton>("CmdCapture")->click();
    const std::vector<LineEvent> saved = parseCapture(world.content("ligne.txt"));
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[1], (LineEvent{1'709'647'629'123, LineEventKind::kReceived, "REF001\r\n"}));
    find<QPushButton>("CmdPause")->click();
    EXPECT_EQ(rows->rowCount(), 3);
    world.events.tick += 2000;
    window->refresh();
    EXPECT_THAT(find<QLabel>("LblLiaison")->text().toStdString(), HasSubstr("bonne"));
}

TEST_F(Dashboard, StoresOptionsAtOnceAndTakesAdviceWhenAsked) {
    open();
    for (const OptionInfo& info : allOptions()) {
        auto* const box = find<QWidget>(("Opt" + std::string(info.key)).c_str());
        ASSERT_NE(box, nullptr) << info.key;
        const std::int32_t before = optionValue(profiles, folder.path(), info.option);
        QTest::keyClick(box, info.number ? Qt::Key_Up : Qt::Key_Space);
        EXPECT_EQ(optionValue(profiles, folder.path(), info.option),
                  info.number ? before + 1 : 1 - before)
            << info.key;
        setOption(profiles, folder.path(), info.option, info.standard);
    }
    window->refresh();
    auto* const advice = find<QPushButton>("CmdConseils");
    advice->click();
    EXPECT_FALSE(optionSet(profiles, folder.path(), Option::kEmptyBuffer)) << "not agreed to";
    world.dialogs.confirmations = {true};
    advice->click();
    for (const OptionInfo& info : allOptions())
        EXPECT_EQ(optionValue(profiles, folder.path(), info.option),
                  info.advisable ? 1 : info.standard);
    EXPECT_TRUE(find<QCheckBox>("OptTamponVide")->isChecked());
    advice->click();
    EXPECT_EQ(world.dialogs.shown.back().text,
              "Les réglages conseillés sont déjà en service."_ansi);
    std::filesystem::remove(optionsIni(folder.path()));
    std::filesystem::create_directory(optionsIni(folder.path()));
    find<QCheckBox>("OptTamponVide")->click();
    EXPECT_FALSE(find<QCheckBox>("OptTamponVide")->isChecked()) << "what is stored is shown";
}

TEST_F(Dashboard, ShowsAndChangesTheEntriesOfApplications) {
    const std::string ini = applicationsIni(folder.path());
    testing::writeBytes(ini,
                        "; mine\r\n[Term]\r\nPauseTouche=5\r\nAvance=x\r\n[*]\r\nMethode=pave\r\n");
    lastTarget = {"xterm", "term"};
    open();
    find<QTabWidget>("TabTableau")->setCurrentIndex(2);
    auto* const table = find<QTableView>("TblApplications")->model();
    const auto row = [&](int at) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column)
            cells << table->index(at, column).data().toString();
        return cells.join("|");
    };
    EXPECT_EQ(row(0), QString::fromUtf8("Term||5||x (ignoré)|"));
    EXPECT_EQ(row(1), "* (toutes)|pave||||");
    EXPECT_TRUE(table->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(find<QLabel>("LblCible")->text(),
              QString::fromUtf8(
                  "Dernière saisie : xterm, term ; méthode pave, 5 ms après chaque touche."));
    QTest::keyClick(find<QComboBox>("CboMethode"), Qt::Key_End);
    QTest::keyClick(find<QWidget>("NumPauseTouche"), Qt::Key_Up);
    QTest::keyClick(find<QWidget>("NumAvance"), Qt::Key_Up);
    EXPECT_EQ(row(0), "Term|unicode|6||1|");
    QTest::keyClick(find<QWidget>("NumAvance"), Qt::Key_Down);
    QTest::keyClick(find<QComboBox>("CboMethode"), Qt::Key_Home);
    EXPECT_EQ(row(0), "Term||6|||") << "by default again";

    world.dialogs.inputs = {" [x] ", "", "Mien & tien", "TERM"};
    for (int i = 0; i < 4; ++i) find<QPushButton>("CmdAjouter")->click();
    EXPECT_EQ(world.dialogs.shown.size(), 4U + 1U) << "the brackets";
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(find<QTableView>("TblApplications")->currentIndex().row(), 0)
        << "it is there already";
    for (const bool agreed : {false, true}) {
        world.dialogs.confirmations = {agreed};
        find<QPushButton>("CmdSupprimer")->click();
        EXPECT_EQ(table->rowCount(), agreed ? 2 : 3);
    }
    trial = {.outcome = TrialOutcome::kExact,
             .stop = {},
             .application = "Neuf",
             .manner = {.keyPause = 2}};
    world.dialogs.confirmations = {true, true};
    find<QPushButton>("CmdEssayer")->click();
    EXPECT_EQ(row(2), "Neuf||2|||");
    EXPECT_EQ(testing::bytesOf(ini),
              "; mine\r\n[*]\r\nMethode=pave\r\n[Mien & tien]\r\nMethode=\r\n"
              "[Neuf]\r\nPauseTouche=2\r\n");
}

TEST_F(Dashboard, GoesBackToACopyOnceTheSettingsAreClosed) {
    open();
    EXPECT_FALSE(find<QPushButton>("CmdRevenir")->isEnabled());
    find<QPushButton>("CmdCopierBase")->click();
    writeCounter(*state.database, 3);
    insertScenario(*state.database, {1, "Stock", "Emulation", 0, 0, "", 0, 0, 0});
    for (const bool close : {false, true}) {
        settingsClose = close;
        world.dialogs.confirmations = {true};
        find<QPushButton>("CmdRevenir")->click();
        EXPECT_EQ(scenarioNames(*state.database).empty(), close);
    }
    EXPECT_EQ(find<QListView>("LstCopies")->model()->rowCount(), 2);
}

}  // namespace
}  // namespace kalvo
