#include "tray/stop_window.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace kalvo {

namespace {

constexpr int kMargin = 20;
constexpr int kBetweenLooks = 700;  // milliseconds
constexpr Qt::WindowFlags kFlags = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                   Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;

}  // namespace

StopWindow::StopWindow(const std::function<bool()>& typing, const std::function<void()>& stop)
    : QWidget(nullptr, kFlags) {
    setObjectName("frmArretSaisie");
    setWindowTitle("KALVO Horizon : saisie en cours");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(new QLabel("Saisie en cours."));
    auto* const button = new QPushButton("Arrêter la saisie");
    button->setObjectName("CmdArreterSaisie");
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::clicked, this, stop);
    layout->addWidget(button);
    timer_.setInterval(kBetweenLooks);
    connect(&timer_, &QTimer::timeout, this, [this, typing] {
        if (typing()) {
            place();
        } else {
            timer_.stop();
            hide();
        }
    });
}

void StopWindow::place() {
    if (isVisible()) return;
    adjustSize();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    move(area.right() + 1 - kMargin - width(), area.bottom() + 1 - kMargin - height());
    show();
}

}  // namespace kalvo
