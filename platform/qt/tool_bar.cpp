#include "platform/qt/tool_bar.h"

#include <QAbstractButton>
#include <QAction>
#include <QToolBar>

#include "platform/qt/pictogram.h"
#include "platform/qt/push_button.h"

namespace kalvo {

QToolBar* makeToolBar(const QString& name, const std::vector<ToolButton>& buttons) {
    auto* const bar = new QToolBar;
    bar->setObjectName(name);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const ToolButton& button : buttons) {
        auto* const action = bar->addAction(pictogram(button.icon), button.text);
        action->setToolTip(button.tip);
        action->setShortcuts(button.shortcuts);
        QObject::connect(action, &QAction::triggered, bar, [run = button.run] { run(); });
        auto* const widget = qobject_cast<QAbstractButton*>(bar->widgetForAction(action));
        widget->setFocusPolicy(Qt::TabFocus);
        pressWithEnter(widget);
    }
    return bar;
}

}  // namespace kalvo
