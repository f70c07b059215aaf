#include "platform/qt/qt_progress.h"

#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QThread>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr qint64 kRepaintInterval = 33;  // milliseconds
constexpr int kWidth = 340;
constexpr int kExposeTries = 20;
constexpr unsigned long kExposePause = 5;  // milliseconds

// Shown over the application that is typed into, which must keep the focus.
constexpr Qt::WindowFlags kFlags = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                   Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;

}  // namespace

QtProgress::QtProgress(std::function<void()> draw)
    : draw_(std::move(draw)), window_(std::make_unique<QWidget>(nullptr, kFlags)) {
    window_->setObjectName("frmProgress");
    window_->setWindowTitle("KALVO Horizon");
    window_->setAttribute(Qt::WA_ShowWithoutActivating);
    window_->setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QVBoxLayout(window_.get());
    Label1 = new QLabel;
    Label1->setObjectName("Label1");
    ProgressBar1 = new QProgressBar;
    ProgressBar1->setObjectName("ProgressBar1");
    layout->addWidget(Label1);
    layout->addWidget(ProgressBar1);
    window_->setFixedSize(kWidth, window_->sizeHint().height());
    sinceRepaint_.start();
}

QtProgress::~QtProgress() = default;

void QtProgress::setLabel(std::string_view text) {
    Label1->setText(toQString(text));
    repaint();
}

void QtProgress::setValue(double percent) {
    ProgressBar1->setValue(static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0))));
    refresh();
}

void QtProgress::show() {
    if (window_->isVisible()) return;
    ProgressBar1->setValue(0);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    window_->move(area.center() - window_->rect().center());
    window_->show();
    // The window system shows a window in its own time; before that nothing is drawn.
    for (int i = 0; i < kExposeTries && !window_->windowHandle()->isExposed(); ++i) {
        draw_();
        QThread::msleep(kExposePause);
    }
    repaint();
}

void QtProgress::refresh() {
    if (sinceRepaint_.elapsed() >= kRepaintInterval) repaint();
}

void QtProgress::unload() { window_->hide(); }

void QtProgress::repaint() {
    if (window_->isVisible()) {
        window_->update();
        draw_();
    }
    sinceRepaint_.restart();
}

}  // namespace kalvo
