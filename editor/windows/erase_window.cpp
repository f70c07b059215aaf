#include "editor/windows/erase_window.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/erase_question.h"
#include "platform/qt/qt_text.h"
#include "settings/settings_store.h"

namespace kalvo {

EraseWindow::EraseWindow(const std::function<void(bool erase)>& answer) {
    setObjectName("frmEffacer");
    setWindowTitle(toQString(kApplicationTitle));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto* const lblMessage = new QLabel(toQString(kEraseQuestion));
    lblMessage->setObjectName("lblMessage");
    auto* const buttons = new QDialogButtonBox;
    auto* const CmdOK = buttons->addButton("&Oui", QDialogButtonBox::AcceptRole);
    CmdOK->setObjectName("CmdOK");
    CmdOK->setToolTip("Efface du terminal les données qu'il vient d'envoyer.");
    CmdOK->setAutoDefault(false);
    CmdNon = buttons->addButton("&Non", QDialogButtonBox::RejectRole);
    CmdNon->setObjectName("CmdNon");
    CmdNon->setToolTip("Laisse les données dans le terminal (Échap).");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblMessage);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::finished, this,
            [answer](int result) { answer(result == QDialog::Accepted); });
}

// The toolkit makes the first button the default one whenever the window appears.
void EraseWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    CmdNon->setDefault(true);
    CmdNon->setFocus();
}

}  // namespace kalvo
