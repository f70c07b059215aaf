#include "editor/windows/pages/scenario_page_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "editor/windows/output_file_window.h"
#include "editor/windows/row_list_view.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

void showText(QLineEdit* box, const std::string& text) {
    const QSignalBlocker quiet(box);
    if (fromQString(box->text()) != text) box->setText(toQString(text));
}

// The scenarios, each with what it is chosen for.
std::vector<ShownRow> markedScenarios(const SettingsContext& context) {
    const RowList& list = context.scenarios.form.LstScen;
    const ChoicesForm& choices = context.choices.form;
    std::vector<ShownRow> rows = plainRows(list.rows);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string name = rowText(list.rows[row]);
        rows[row].marked = equalIgnoringCase(name, context.state.scenario.active.ScenarioName);
        QStringList uses;
        if (rows[row].marked) uses << "en service";
        if (equalIgnoringCase(name, choices.RacInvent)) uses << "inventaire";
        if (equalIgnoringCase(name, choices.RacCde)) uses << "commande";
        if (!uses.isEmpty()) rows[row].text += "  (" + uses.join(", ") + ")";
    }
    return rows;
}

}  // namespace

ScenarioPage::ScenarioPage(const SettingsContext& context) : context_(context) {
    auto* const bar =
        makeToolBar("TlbScenarios", {{"Valider",
                                      "valider",
                                      "Met en service le scénario sélectionné (Alt+V).",
                                      {Qt::ALT | Qt::Key_V},
                                      [this] {
                                          context_.act([this] {
                                              if (context_.scenarios.chooseScenario())
                                                  context_.confirm("Mis en service");
                                          });
                                      }},
                                     {"Fermer",
                                      "fermer",
                                      "Ferme la fenêtre (Échap).",
                                      {Qt::Key_Escape, Qt::ALT | Qt::Key_F},
                                      context_.close}});
    auto* const page = new QWidget;
    auto* const columns = new QHBoxLayout(page);
    columns->addWidget(listSide(), 1);
    columns->addWidget(propertiesSide(), 1);
    auto* const TabScenario = new QTabWidget;
    TabScenario->setObjectName("TabScenario");
    TabScenario->addTab(page, "&Scénarios");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addWidget(TabScenario, 1);
}

QWidget* ScenarioPage::listSide() {
    auto* const bar = makeToolBar(
        "TlbScen",
        {{"Créer",
          "creer",
          "Commence un nouveau scénario (Ctrl+N).",
          {QKeySequence::New},
          [this] {
              context_.act([this] { context_.scenarios.createNew(); });
              TxtNomScen->setFocus();
          }},
         {"Supprimer",
          "supprimer",
          "Supprime définitivement le scénario sélectionné, après confirmation (Ctrl+Suppr).",
          {Qt::CTRL | Qt::Key_Delete},
          [this] { context_.act([this] { context_.scenarios.deleteScenario(); }); }},
         {"Dupliquer",
          "dupliquer",
          "Crée un scénario semblable au scénario sélectionné, avec ses actions (Ctrl+U).",
          {Qt::CTRL | Qt::Key_U},
          [this] { context_.act([this] { context_.scenarios.duplicate(); }); }},
         {"Renommer",
          "renommer",
          "Donne un autre nom au scénario sélectionné (F2).",
          {Qt::Key_F2},
          [this] { context_.act([this] { context_.scenarios.rename(); }); }}});
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setMinimumWidth(bar->sizeHint().width());  // no button behind an arrow
    LstScen = new RowListView(
        "LstScen",
        "Les scénarios ; un double clic (ou Entrée) montre les actions de l'un d'eux. En gras, "
        "celui qui est en service.");
    LstScen->onSelect = [this](int row) {
        if (row >= 0) context_.act([&] { context_.scenarios.select(row); });
    };
    LstScen->onEnter = [this](int row) {
        context_.act([&] {
            if (context_.scenarios.form.LstScen.selected != row) context_.scenarios.select(row);
            context_.scenarios.loadSelected();
        });
    };
    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    layout->addWidget(LstScen, 1);
    return side;
}

QWidget* ScenarioPage::propertiesSide() {
    auto* const bar = makeToolBar(
        "TlbSaveScen",
        {{"Enregistrer",
          "enregistrer",
          "Enregistre le nouveau scénario, ou le chemin et l'incrémentation d'un scénario existant "
          "(Ctrl+S).",
          {QKeySequence::Save},
          [this] {
              context_.act([this] {
                  if (context_.scenarios.save())
                      context_.confirm(std::string("Scénario enregistré"_ansi));
              });
          }}});
    TxtNomScen = new QLineEdit;
    TxtNomScen->setObjectName("TxtNomScen");
    TxtNomScen->setToolTip(
        "Le nom du scénario, sans apostrophe ; c'est aussi celui de son fichier.");
    connect(TxtNomScen, &QLineEdit::textChanged, this,
            [this](const QString& text) { context_.scenarios.setName(fromQString(text)); });
    CboType = makeComboBox(
        "CboType",
        "Emulation frappe les données au clavier, Fichier les écrit dans un "
        "fichier.",
        [this](int row) { context_.act([&] { context_.scenarios.chooseType(row); }); });
    ChcPartiel = new QCheckBox("Trame partielle");
    ChcPartiel->setObjectName("ChcPartiel");
    ChcPartiel->setToolTip("À cocher quand un enregistrement arrive en plusieurs trames.");
    connect(ChcPartiel, &QCheckBox::clicked, this, [this](bool ticked) {
        context_.act([&] { context_.scenarios.clickPartialFrame(ticked); });
    });
    LblNomScen = new QLabel("&Nom :");
    LblNomScen->setObjectName("LblNomScen");
    LblNomScen->setBuddy(TxtNomScen);
    LblType = new QLabel("T&ype :");
    LblType->setObjectName("LblType");
    LblType->setBuddy(CboType);

    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    auto* const rows = new QFormLayout;
    rows->addRow(LblNomScen, TxtNomScen);
    rows->addRow(LblType, CboType);
    layout->addLayout(rows);
    layout->addWidget(ChcPartiel);
    layout->addWidget(pathFrame());
    layout->addStretch();
    return side;
}

QGroupBox* ScenarioPage::pathFrame() {
    TxtChemin = new QLineEdit;
    TxtChemin->setObjectName("TxtChemin");
    TxtChemin->setToolTip("Le fichier que le scénario écrit, avec son dossier.");
    connect(TxtChemin, &QLineEdit::textChanged, this,
            [this](const QString& text) { context_.scenarios.setPath(fromQString(text)); });
    connect(TxtChemin, &QLineEdit::editingFinished, this, [this] { finishEditing(); });
    chkIncrement = new QCheckBox("Incrémentation des fichiers");
    chkIncrement->setObjectName("chkIncrement");
    chkIncrement->setToolTip("À cocher pour un nouveau fichier à chaque trame : lot1, lot2, ...");
    connect(chkIncrement, &QCheckBox::clicked, this,
            [this](bool ticked) { context_.scenarios.setIncrement(ticked); });
    FraChemin = new QGroupBox("Fichier de récupération");
    FraChemin->setObjectName("FraChemin");
    auto* const rows = new QFormLayout(FraChemin);
    auto* const CmdParcourir = makeButton("CmdParcourir", "Parco&urir...", kOutputFileTip);
    connect(CmdParcourir, &QPushButton::clicked, this, [this] { choosePath(); });
    auto* const path = new QHBoxLayout;
    path->addWidget(TxtChemin, 1);
    path->addWidget(CmdParcourir);
    auto* const label = new QLabel("Che&min :");
    label->setBuddy(TxtChemin);
    rows->addRow(label, path);
    rows->addRow(chkIncrement);
    return FraChemin;
}

void ScenarioPage::choosePath() {
    const QString chosen = chooseOutputFile(this, TxtChemin->text());
    if (chosen.isEmpty()) return;
    TxtChemin->setText(chosen);
    TxtChemin->setModified(true);
    finishEditing();
}

void ScenarioPage::finishEditing() {
    if (!TxtChemin->isModified() || context_.current.scenarioNumber == 0) return;
    TxtChemin->setModified(false);
    context_.act([this] { context_.scenarios.editPath(fromQString(TxtChemin->text())); });
}

void ScenarioPage::refresh() {
    const ScenarioForm& form = context_.scenarios.form;
    LstScen->showRows(markedScenarios(context_), form.LstScen.selected);
    for (QWidget* const input :
         std::initializer_list<QWidget*>{LblNomScen, TxtNomScen, LblType, CboType, ChcPartiel})
        input->setVisible(form.inputsShown);
    // What "Enregistrer" does not change of a scenario that exists.
    const bool entering = context_.current.scenarioNumber == 0;
    TxtNomScen->setReadOnly(!entering);
    CboType->setEnabled(entering);
    ChcPartiel->setEnabled(entering);
    FraChemin->setVisible(form.FraCheminShown);
    showText(TxtNomScen, form.TxtNomScen);
    showRows(CboType, form.CboType);
    ChcPartiel->setChecked(form.ChcPartiel);
    showText(TxtChemin, form.TxtChemin);
    chkIncrement->setChecked(form.chkIncrement);
}

}  // namespace kalvo
