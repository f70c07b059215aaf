#include "editor/windows/pages/port_page_window.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "editor/port/port_choice.h"
#include "editor/windows/row_list_view.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kTimeBetweenLooks = 1000;  // milliseconds

// A frame around one control.
QGroupBox* frame(const QString& title, QWidget* control) {
    auto* const box = new QGroupBox(title);
    (new QVBoxLayout(box))->addWidget(control);
    return box;
}

}  // namespace

PortPage::PortPage(const SettingsContext& context)
    : context_(context), devices_(context.services.portDevices()) {
    plugging_.setInterval(kTimeBetweenLooks);
    connect(&plugging_, &QTimer::timeout, this, [this] { followPlugging(); });
    plugging_.start();
    auto* const bar = makeToolBar(
        "TlbPrpp",
        {{"Valider",
          "valider",
          "Enregistre ces réglages et rouvre le port avec eux (Alt+V). Un autre type de terminal "
          "n'est pris en compte que par « Valider » de l'onglet Connexion.",
          {Qt::ALT | Qt::Key_V},
          [this] {
              context_.act([this] {
                  try {
                      context_.serial.saveProperties();
                  } catch (const RuntimeError&) {
                      context_.applyStillDue();
                      throw;
                  }
                  context_.close();
              });
          }},
         {"Fermer",
          "fermer",
          "Ferme la fenêtre sans rien enregistrer (Échap).",
          {Qt::Key_Escape, Qt::ALT | Qt::Key_F},
          context_.close}});
    auto* const columns = new QHBoxLayout;
    // The devices have long names.
    columns->addWidget(leftColumn(), 3);
    columns->addWidget(rightColumn(), 2);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addLayout(columns);
    layout->addStretch();
}

QWidget* PortPage::leftColumn() {
    CboPort = makeComboBox(
        "CboPort", "Le port série du terminal ; les ports présents montrent leur appareil.",
        // The first choice chooses the usual line, too.
        [this](int row) { context_.act([=, this] { context_.serial.choosePort(row); }); });
    CboPort->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    CboPort->setMinimumContentsLength(24);
    CboVitesse = makeComboBox("CboVitesse", "La vitesse de la ligne, en bits par seconde.",
                              [this](int row) { context_.serial.chooseSpeed(row); });
    CboFlux =
        makeComboBox("CboFlux",
                     "La façon dont terminal et poste se demandent d'attendre : celle qui est "
                     "réglée dans le terminal.",
                     [this](int row) { context_.serial.chooseFlow(row); });
    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame("Port", CboPort));
    layout->addWidget(frame("Vitesse", CboVitesse));
    layout->addWidget(frame("Contrôle de flux", CboFlux));
    layout->addStretch();
    return column;
}

QWidget* PortPage::rightColumn() {
    CboDonnées = makeComboBox("CboDonnées", "Le nombre de bits de chaque caractère, 8 en général.",
                              [this](int row) { context_.serial.chooseDataBits(row); });
    CboParité = makeComboBox("CboParité", "Le bit de contrôle ajouté à chaque caractère.",
                             [this](int row) { context_.serial.chooseParity(row); });
    CboArret = makeComboBox("CboArret", "Le nombre de bits qui terminent chaque caractère.",
                            [this](int row) { context_.serial.chooseStopBits(row); });
    CboProtocol =
        makeComboBox("CboProtocol", "Le type du terminal, qui décide de la façon de recevoir.",
                     [this](int row) { context_.serial.chooseProtocol(row); });
    ChDatalogic = new QCheckBox("Pour Datalogic");
    ChDatalogic->setObjectName("ChDatalogic");
    ChDatalogic->setToolTip(
        "Note que le scénario que l'on crée sert un terminal Datalogic. La case n'est pas "
        "enregistrée et ne change ni la réception ni la saisie.");
    connect(ChDatalogic, &QCheckBox::toggled, this,
            [this](bool ticked) { context_.scenarios.setDatalogic(ticked); });
    auto* const CmdTransfert = makeButton(
        "CmdTransfert", "HT630", "Ouvre le transfert de fichiers avec un terminal portable.");
    connect(CmdTransfert, &QPushButton::clicked, this,
            [this] { context_.act([this] { context_.services.showPortableTransfer(window()); }); });

    auto* const preferences = new QGroupBox("Préférence de connection");
    auto* const form = new QFormLayout(preferences);
    form->addRow("Bits de données :", CboDonnées);
    form->addRow("Parité :", CboParité);
    form->addRow("Bits d'arrêts :", CboArret);
    auto* const protocol = new QGroupBox("Protocol");
    auto* const rows = new QVBoxLayout(protocol);
    rows->addWidget(CboProtocol);
    rows->addWidget(ChDatalogic);
    rows->addWidget(CmdTransfert, 0, Qt::AlignLeft);
    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(preferences);
    layout->addWidget(protocol);
    layout->addStretch();
    return column;
}

void PortPage::followPlugging() {
    if (!isVisible() || CboPort->view()->isVisible()) return;
    std::vector<std::string> devices = context_.services.portDevices();
    if (devices == devices_) return;
    devices_ = std::move(devices);
    showPorts();
}

void PortPage::showPorts() {
    showRows(CboPort, portsWithDevices(context_.serial.CboPort, devices_));
}

void PortPage::refresh() {
    SerialConfig& serial = context_.serial;
    showPorts();
    showRows(CboVitesse, serial.CboVitesse, toQString(serial.unlistedSpeed));
    showRows(CboDonnées, serial.CboDonnées);
    showRows(CboParité, serial.CboParité);
    showRows(CboArret, serial.CboArret);
    showRows(CboFlux, serial.CboFlux);
    showRows(CboProtocol, serial.CboProtocol);
    ChDatalogic->setChecked(context_.scenarios.form.ChDatalogic);
}

}  // namespace kalvo
