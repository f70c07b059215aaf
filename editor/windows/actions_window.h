// The step list FrmActions with its context menu frmpopup.
#pragma once

#include <QWidget>

#include "editor/settings_context.h"

class QListWidget;
class QMenu;

namespace kalvo {

class ActionsWindow : public QWidget {
public:
    // `closeSteps` closes all windows of the steps.
    ActionsWindow(QWidget* owner, const SettingsContext& context, std::function<void()> closeSteps);

    // Shows what the controllers hold.
    void refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeMenu();
    void popUp(const QPoint& position);

    const SettingsContext& context_;
    std::function<void()> closeSteps_;
    QListWidget* LstChamps;
    QMenu* frmpopup;
};

}  // namespace kalvo
