// The window "Tableau de bord".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "dashboard/windows/dashboard_window.h"
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
    std::vector<std::int32_t> retyped;
    bool settingsClose = true;
    std::unique_ptr<DashboardWindow> window;

    void open() {
        window = std::make_unique<DashboardWindow>(
            DashboardContext{platform,
                             state,
                             &file,
                             {.deliver = [](const std::function<void()>& handler) { handler(); },
                              .retype = [this](std::int64_t, const std::string&,
                                               std::int32_t from) { retyped.push_back(from); },
                              .closeSettings = [this] { return settingsClose; }}});
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
    auto* const fields = find<QListWidget>("LstChampsLot");
    ASSERT_EQ(table->model()->rowCount(), 2);
    EXPECT_EQ(fields->item(0)->text(), "1 : R2");
    table->selectRow(1);
    EXPECT_EQ(fields->item(0)->text(), "1 : R1");
    EXPECT_EQ(find<QListWidget>("LstFrappe")->item(1)->text(), "    Texte : R1");
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

TEST_F(Dashboard, StoresOptionsAtOnceAndTakesAdviceWhenAsked) {
    open();
    for (const OptionInfo& info : allOptions()) {
        QWidget* const box = find<QWidget>(("Opt" + std::string(info.key)).c_str());
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
    EXPECT_EQ(find<QListWidget>("LstCopies")->count(), 2);
}

}  // namespace
}  // namespace kalvo
