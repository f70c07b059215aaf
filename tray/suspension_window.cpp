#include "tray/suspension_window.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int kMargin = 20;
constexpr Qt::WindowFlags kFlags = Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                   Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus;

}  // namespace

SuspensionWindow::SuspensionWindow(const Actions& actions)
    : QWidget(nullptr, kFlags), text_(new QLabel) {
    setObjectName("frmSuspension");
    setWindowTitle("KALVO Horizon : saisie suspendue");
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    auto* const buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    const auto add = [&](const QString& name, const QString& caption,
                         const std::function<void()>& action) {
        auto* const button = new QPushButton(caption);
        button->setObjectName(name);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
    };
    add("CmdReprendre", "Reprendre", actions.resume);
    add("CmdRecommencer", "Recommencer l'enregistrement", actions.restartRecord);
    add("CmdAbandonner", "Abandonner", actions.abandon);
}

void SuspensionWindow::showText(const QString& text) {
    text_->setText(text);
    adjustSize();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    move(area.right() + 1 - kMargin - width(), area.bottom() + 1 - kMargin - height());
    show();
}

}  // namespace kalvo
