#include "platform/qt/tool_bar.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeyEvent>
#include <QToolBar>

#include "platform/qt/pictogram.h"

namespace kalvo {

namespace {

class EnterPresses : public QObject {
public:
    explicit EnterPresses(QAbstractButton* button) : QObject(button), button_(button) {
        button->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        const bool keyEvent =
            event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
        if (!keyEvent) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
        event->accept();
        if (event->type() == QEvent::KeyPress) button_->click();
        return true;
    }

private:
    QAbstractButton* button_;
};

}  // namespace

void pressWithEnter(QAbstractButton* button) { new EnterPresses(button); }

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
