// The window of a scenario's steps: their list, the keys and the test side by side.
#pragma once

#include <QWidget>
#include <functional>

#include "editor/settings_context.h"

class QSplitter;

namespace kalvo {

class ActionsPane;
class KeyPickerPane;
class TestPane;

class StepsWindow : public QWidget {
public:
    // `closed` is called when the user closes it.
    StepsWindow(QWidget* owner, const SettingsContext& context, std::function<void()> closed);

    // Shows what the controllers hold.
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void turnPane(int step);

    const SettingsContext& context_;
    std::function<void()> closed_;
    QSplitter* panes_;
    ActionsPane* FrmActions;
    KeyPickerPane* FrmTouches;
    TestPane* FrmTest;
};

}  // namespace kalvo
