#include "tray/transfer_window.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

TransferWindow::TransferWindow(const std::function<void()>& onStop)
    : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint) {
    setObjectName("frmTransfertEnCours");
    setWindowTitle("KALVO Horizon");
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel("Transfert en cours : le lecteur envoie ses enregistrements.\n"
                   "Terminez sur le lecteur, ou arrêtez ici ; ce qui a été reçu "
                   "sera saisi."));
    auto* const stop = new QPushButton("&Arrêter");
    stop->setObjectName("CmdArreter");
    layout->addWidget(stop, 0, Qt::AlignRight);
    connect(stop, &QPushButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::rejected, this, onStop);
}

}  // namespace kalvo
