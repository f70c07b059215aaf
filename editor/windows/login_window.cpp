#include "editor/windows/login_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>
#include <QVBoxLayout>

#include "editor/access_lock.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"

namespace kalvo {

LoginWindow::LoginWindow(const Platform& platform, AccessLock& lock)
    : platform_(platform), lock_(lock) {
    setObjectName("frmLogin");
    setWindowTitle(toQString(kLoginTitle));
    setWindowFlag(Qt::WindowStaysOnTopHint);
    auto* const bar = makeToolBar(
        "TlbPrpp",
        {{"Valider",
          "valider",
          "Ouvre le paramétrage (Entrée).",
          {Qt::Key_Return, Qt::Key_Enter},
          [this] { check(); }},
         {"Fermer", "fermer", "Renonce au paramétrage (Échap).", {Qt::Key_Escape}, [this] {
              reject();
          }}});
    txtPassword = new QLineEdit;
    txtPassword->setObjectName("txtPassword");
    txtPassword->setEchoMode(QLineEdit::Password);
    txtPassword->setMinimumWidth(220);
    txtPassword->setToolTip("Le mot de passe remis à l'intégrateur.");
    auto* const label = new QLabel("&Mot de passe:");
    label->setBuddy(txtPassword);
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(txtPassword, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addLayout(row);
    txtPassword->setFocus();
}

void LoginWindow::check() {
    if (tryPassword(platform_, lock_, fromQString(txtPassword->text()))) {
        accept();
        return;
    }
    txtPassword->setFocus();
    txtPassword->clear();
}

}  // namespace kalvo
