#include "editor/windows/port_choice_window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <string>

#include "editor/port/port_choice.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

PortChoiceWindow::PortChoiceWindow(ProfileFiles& profiles, std::string_view applicationFolder,
                                   const SerialPort& port, const std::vector<std::string>& devices,
                                   int current) {
    setObjectName("FrmChoixCom");
    setWindowTitle("Problème d'ouverture du port Com");
    setWindowFlag(Qt::WindowStaysOnTopHint);
    // The title in full, with the buttons of a title bar beside it.
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) * 2);
    CboChoix = new QComboBox;
    CboChoix->setObjectName("CboChoix");
    CboChoix->setToolTip("Le port du terminal ; les ports présents montrent leur appareil.");
    const auto rows = portRows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        QString text = toQString(rows[row]);
        if (row < devices.size() && !devices[row].empty()) text += " : " + toQString(devices[row]);
        CboChoix->addItem(text);
        if (!portOffered(static_cast<int>(row)))
            qobject_cast<QStandardItemModel*>(CboChoix->model())
                ->item(CboChoix->count() - 1)
                ->setEnabled(false);
    }
    CboChoix->setCurrentIndex(current - 1);
    auto* const label = new QLabel("Choisissez un autre &port :");
    label->setBuddy(CboChoix);
    auto* const buttons = new QDialogButtonBox;
    auto* const CmdOK = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    CmdOK->setObjectName("CmdOK");
    CmdOK->setToolTip("Enregistre ce port et essaie de l'ouvrir (Entrée).");
    CmdOK->setDefault(true);
    const auto offerOk = [CmdOK](int row) { CmdOK->setEnabled(portOffered(row)); };
    offerOk(CboChoix->currentIndex());
    connect(CboChoix, &QComboBox::currentIndexChanged, this, offerOk);
    auto* const CmdAnnuler = buttons->addButton("Annuler", QDialogButtonBox::RejectRole);
    CmdAnnuler->setObjectName("CmdAnnuler");
    CmdAnnuler->setToolTip("Continue sans port (Échap).");
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(CboChoix);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this,
            [this, &profiles, &port, folder = std::string(applicationFolder)] {
                storePortChoice(profiles, folder, port, CboChoix->currentIndex());
                accept();
            });
}

}  // namespace kalvo
