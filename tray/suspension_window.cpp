#include "tray/suspension_window.h"

#include <QHBoxLayout>
#include <QLabel>

namespace kalvo {

SuspensionWindow::SuspensionWindow(const Actions& actions)
    : CornerWindow("frmSuspension", "KALVO Horizon : saisie suspendue"), text_(new QLabel) {
    text_->setWordWrap(true);
    inside()->addWidget(text_);
    auto* const buttons = new QHBoxLayout;
    inside()->addLayout(buttons);
    addButton(buttons, "CmdReprendre", "Reprendre", actions.resume);
    addButton(buttons, "CmdRecommencer", "Recommencer l'enregistrement", actions.restartRecord);
    addButton(buttons, "CmdAbandonner", "Abandonner", actions.abandon);
}

void SuspensionWindow::showText(const QString& text) {
    text_->setText(text);
    showInCorner();
}

}  // namespace kalvo
