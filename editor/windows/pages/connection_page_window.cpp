#include "editor/windows/pages/connection_page_window.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolBar>
#include <QVBoxLayout>

#include "editor/windows/row_list_view.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kNameWidth = 260;
constexpr int kSeparatorWidth = 40;

}  // namespace

ConnectionPage::ConnectionPage(const SettingsContext& context) : context_(context) {
    auto* const bar = makeToolBar(
        "TlbConnect",
        {{"Valider",
          "valider",
          "Enregistre et applique toute la configuration, puis rouvre le port (Entrée).",
          {Qt::Key_Return, Qt::Key_Enter, Qt::ALT | Qt::Key_V},
          [this] {
              context_.act([this] {
                  if (context_.choices.applyConfiguration())
                      context_.confirm(std::string("Configuration enregistrée"_ansi));
              });
          }},
         {"Fermer",
          "fermer",
          "Ferme la fenêtre sans rien enregistrer (Échap).",
          {Qt::Key_Escape, Qt::ALT | Qt::Key_F},
          context_.close}});

    CboChoix = makeComboBox("CboChoix",
                            "Le scénario appliqué à ce que les terminaux envoient chaque jour.",
                            [this](int row) { context_.choices.chooseConnection(row); });
    CboInvent = makeComboBox("CboInvent", "Le scénario réservé aux inventaires.", [this](int row) {
        context_.choices.chooseInventory(row <= 0 ? std::string()
                                                  : fromQString(CboInvent->itemText(row)));
    });
    CboCde = makeComboBox(
        "CboCde", "Le scénario que l'entrée Commande du menu met en service.", [this](int row) {
            context_.choices.chooseOrder(row <= 0 ? std::string()
                                                  : fromQString(CboCde->itemText(row)));
        });
    txtSep = new QLineEdit;
    txtSep->setObjectName("txtSep");
    txtSep->setMaximumWidth(kSeparatorWidth);
    txtSep->setToolTip(
        "Le caractère qui remplace le point ou la virgule décimale ; x supprime les décimales "
        "nulles.");
    connect(txtSep, &QLineEdit::textChanged, this,
            [this](const QString& text) { context_.choices.setSeparator(fromQString(text)); });
    for (QComboBox* const box : {CboChoix, CboInvent, CboCde}) box->setMinimumWidth(kNameWidth);

    auto* const scenarios = new QGroupBox("Scénarios en service");
    auto* const form = new QFormLayout(scenarios);
    form->addRow("Scé&nario choisi :", CboChoix);
    form->addRow("&Inventaire :", CboInvent);
    form->addRow("C&ommande :", CboCde);
    auto* const numbers = new QGroupBox("Nombres");
    (new QFormLayout(numbers))->addRow("Séparateur &décimal :", txtSep);

    LblSuite = new QLabel(
        "Le type de terminal et la vitesse ne sont pas encore enregistrés : « Valider », ici, les "
        "enregistre et rouvre le port.");
    LblSuite->setObjectName("LblSuite");
    LblSuite->setWordWrap(true);
    LblSuite->hide();

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addWidget(LblSuite);
    layout->addWidget(scenarios);
    layout->addWidget(numbers);
    layout->addStretch();
}

// The names of all scenarios behind a row for none.
RowList ConnectionPage::namesWithNone(const std::string& chosen) const {
    RowList list = context_.choices.form.CboChoix;
    list.rows.insert(list.rows.begin(), "(aucun)");
    list.select(chosen);
    if (list.selected < 0) list.selected = 0;
    return list;
}

void ConnectionPage::showApplyDue() { LblSuite->show(); }

void ConnectionPage::refresh() {
    if (!context_.serial.unsaved()) LblSuite->hide();
    const ChoicesForm& form = context_.choices.form;
    showRows(CboChoix, form.CboChoix, toQString(form.CboChoixText));
    showRows(CboInvent, namesWithNone(form.RacInvent));
    showRows(CboCde, namesWithNone(form.RacCde));
    const QSignalBlocker quiet(txtSep);
    if (fromQString(txtSep->text()) != form.txtSep) txtSep->setText(toQString(form.txtSep));
}

}  // namespace kalvo
