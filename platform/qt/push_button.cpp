#include "platform/qt/push_button.h"

#include <QKeyEvent>
#include <QPushButton>

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

QPushButton* makeButton(const QString& name, const QString& caption, const QString& tip) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    pressWithEnter(button);
    return button;
}

}  // namespace kalvo
