// The settings window frmparametrage.
#pragma once

#include <QWidget>
#include <array>

#include "editor/settings_context_window.h"

class QTabWidget;

namespace kalvo {

class ActionsWindow;
class ConnectionPage;
class KeyPage;
class KeyPickerWindow;
class PortPage;
class ScenarioPage;
class TestWindow;

class SettingsWindow : public QWidget {
public:
    // `editor` outlives the window. Without access level only the tabs of connection and
    // port can be used. RuntimeErrors of the database.
    SettingsWindow(const Platform& platform, RunTimeState& state, EditorState& editor,
                   SettingsServices services);
    ~SettingsWindow() override;

    // Lets the tabs follow the access level.
    void showAccess();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeTabs();
    void turnTab(int step);
    void makeStepWindows();
    void refresh();
    void showSteps();
    void closeSteps();
    void placeStepWindows();
    [[nodiscard]] bool unsaved() const;
    [[nodiscard]] std::array<QWidget*, 4> placedWindows();
    void restorePlace(QWidget* window);

    SerialConfig serial_;
    ActionEditor actions_;
    ScenarioEditor scenarios_;
    SettingsContext context_;
    QTabWidget* TabParam = nullptr;
    ConnectionPage* connection_ = nullptr;
    PortPage* port_ = nullptr;
    KeyPage* particularKeys_ = nullptr;
    KeyPage* systemKeys_ = nullptr;
    ScenarioPage* scenario_ = nullptr;
    ActionsWindow* FrmActions = nullptr;
    KeyPickerWindow* FrmTouches = nullptr;
    TestWindow* FrmTest = nullptr;
};

}  // namespace kalvo
