// The settings window frmparametrage.
#pragma once

#include <QWidget>
#include <array>
#include <string>

#include "editor/access_lock.h"
#include "editor/keys/key_labels.h"
#include "editor/settings_context.h"

class QLabel;
class QLayout;
class QPushButton;
class QTabWidget;

namespace kalvo {

class ConnectionPage;
class PortPage;
class ScenarioPage;
class StepsWindow;

class SettingsWindow : public QWidget {
public:
    // `lock` outlives the window, which takes the access away when it closes. Without it
    // only the tabs of connection and port can be used. RuntimeErrors of the database.
    SettingsWindow(const Platform& platform, RunTimeState& state, AccessLock& lock,
                   SettingsServices services);
    ~SettingsWindow() override;

    // Lets the tabs follow the access level.
    void showAccess();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeTabs();
    [[nodiscard]] QLayout* makeFoot();
    void turnTab(int step);
    void refresh();
    void showSteps();
    void closeSteps();
    [[nodiscard]] bool unsaved() const;
    [[nodiscard]] std::array<QWidget*, 2> placedWindows();

    AccessLock& lock_;
    CurrentScenario current_;
    SerialConfig serial_;
    ActionEditor actions_;
    ScenarioChoices choices_;
    ScenarioEditor scenarios_;
    KeyLabels particularKeys_;
    KeyLabels systemKeys_;
    SettingsContext context_;
    std::string confirmation_;  // of the last change, French
    QTabWidget* TabParam = nullptr;
    QLabel* LblRemarques = nullptr;
    QLabel* LblEtat = nullptr;
    QPushButton* CmdDeverrouiller = nullptr;
    QPushButton* CmdAssistant = nullptr;
    ConnectionPage* connection_ = nullptr;
    PortPage* port_ = nullptr;
    ScenarioPage* scenario_ = nullptr;
    StepsWindow* steps_ = nullptr;
};

}  // namespace kalvo
