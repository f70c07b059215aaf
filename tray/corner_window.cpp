#include "tray/corner_window.h"

#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/qt/xwayland.h"

namespace kalvo {

namespace {

constexpr int kMargin = 20;

// Some Wayland compositors give every window of an X client the focus, and a place of their
// own choice, unless the client asks to be left alone.
Qt::WindowFlags flags() {
    return (throughXwayland() ? Qt::ToolTip
                              : Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint) |
           Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;
}

}  // namespace

CornerWindow::CornerWindow(const QString& name, const QString& title)
    : QWidget(nullptr, flags()), inside_(new QVBoxLayout) {
    setObjectName(name);
    setWindowTitle(title);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    if (!throughXwayland()) {
        setLayout(inside_);
        return;
    }
    // Nobody else draws a frame and the title.
    auto* const frame = new QFrame;
    frame->setFrameStyle(QFrame::Box);
    frame->setLayout(inside_);
    auto* const heading = new QLabel("<b>" + title + "</b>");
    inside_->addWidget(heading);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(frame);
}

void CornerWindow::addButton(QBoxLayout* row, const QString& name, const QString& caption,
                             const std::function<void()>& action) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::clicked, this, action);
    row->addWidget(button);
}

void CornerWindow::showInCorner() {
    adjustSize();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    // How high the frame is nobody knows before it is shown.
    const int title = throughXwayland() ? 0 : style()->pixelMetric(QStyle::PM_TitleBarHeight);
    move(area.right() + 1 - kMargin - width(), area.bottom() + 1 - kMargin - title - height());
    show();
}

}  // namespace kalvo
