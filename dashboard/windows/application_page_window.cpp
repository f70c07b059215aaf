#include "dashboard/windows/application_page_window.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <string>

#include "core/during.h"
#include "editor/windows/row_list_view.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kTimeToChoose = 5000;  // milliseconds, to put the cursor into a field
constexpr std::string_view kStandard = "par défaut"_ansi;

// The first row stands for what is left to the entries behind.
std::optional<int> behindStandard(int row) {
    return row > 0 ? std::optional(row - 1) : std::nullopt;
}

void addField(QGridLayout* grid, int row, int column, const char* caption, QWidget* field) {
    auto* const label = new QLabel(caption);
    label->setBuddy(field);
    grid->addWidget(label, row, column);
    grid->addWidget(field, row, column + 1);
}

}  // namespace

ApplicationPage::ApplicationPage(const DashboardContext& context)
    : context_(context),
      desk_(context.platform, context.state.scenario.applicationFolder),
      table_(desk_) {
    auto* const explanation = new QLabel(
        "Comment la saisie s'adapte à chaque application. Une valeur par défaut est celle de "
        "l'entrée * (toutes).");
    explanation->setWordWrap(true);
    LblCible = new QLabel;
    LblCible->setObjectName("LblCible");
    LblCible->setTextFormat(Qt::PlainText);
    LblCible->setWordWrap(true);
    LblCible->setToolTip("Les entrées en gras valent pour cette application.");
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(makeTable(), 1);
    layout->addWidget(LblCible);
    layout->addWidget(makeEntry());
    layout->addLayout(makeButtons());
    refresh();
}

QWidget* ApplicationPage::makeTable() {
    TblApplications = makeRowTable("TblApplications", "Les entrées d'Applications.ini.", table_);
    TblApplications->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(TblApplications->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { showEntry(); });
    return TblApplications;
}

QWidget* ApplicationPage::makeEntry() {
    FraEntree = new QGroupBox;
    FraEntree->setObjectName("FraEntree");
    CboMethode = makeComboBox(
        "CboMethode",
        "touches : chaque caractère par sa touche ; pave : Alt et son code, pour les bureaux à "
        "distance ; presse-papiers : le texte est collé ; unicode : sous Windows.",
        [this](int index) {
            change([=, this] { desk_.setMethod(row(), behindStandard(index)); });
        });
    CboEtendues = makeComboBox(
        "CboEtendues", "Sous Windows : flèches, Début, Fin... comme celles hors du pavé numérique.",
        [this](int index) {
            change(
                [=, this] { desk_.setNumber(row(), MannerKey::kExtended, behindStandard(index)); });
        });
    auto* const grid = new QGridLayout(FraEntree);
    addField(grid, 0, 0, "&Méthode :", CboMethode);
    addField(grid, 1, 0, "É&tendues :", CboEtendues);
    addField(grid, 0, 2, "&Pause touche :",
             makeNumber(MannerKey::kKeyPause, "Après chaque appui et chaque relâchement."));
    addField(grid, 1, 2, "Pause validatio&n :",
             makeNumber(MannerKey::kConfirmPause,
                        "De plus après Entrée, Tab et les touches de fonction."));
    addField(grid, 0, 4, "A&vance :",
             makeNumber(MannerKey::kLead, "Touches d'avance sur l'application, au plus."));
    grid->setColumnStretch(6, 1);
    return FraEntree;
}

QSpinBox* ApplicationPage::makeNumber(MannerKey key, const char* tip) {
    const MannerKeyInfo& info = mannerKey(key);
    auto* const box = new QSpinBox;
    box->setObjectName("Num" + toQString(info.name));
    box->setToolTip(tip);
    box->setRange(info.lowest - 1, info.highest);
    box->setSpecialValueText(toQString(kStandard));
    if (key != MannerKey::kLead) box->setSuffix(" ms");
    // The style of Windows keeps too little room beside its arrows.
    box->setMinimumWidth(box->sizeHint().width() + 2 * box->fontMetrics().averageCharWidth());
    // Stored once it is typed, not digit by digit.
    box->setKeyboardTracking(false);
    connect(box, &QSpinBox::valueChanged, this, [this, key, lowest = info.lowest](int value) {
        change([=, this] {
            desk_.setNumber(row(), key, value < lowest ? std::nullopt : std::optional(value));
        });
    });
    numbers_[key] = box;
    return box;
}

QLayout* ApplicationPage::makeButtons() {
    auto* const buttons = new QHBoxLayout;
    addButton(buttons, "CmdAjouter", "A&jouter...", "Ajoute une entrée pour une application.",
              &ApplicationPage::add);
    CmdSupprimer =
        addButton(buttons, "CmdSupprimer", "Supprime&r...",
                  "Supprime l'entrée choisie, après une question.", &ApplicationPage::remove);
    addButton(buttons, "CmdEssayer", "&Essayer dans une application...",
              "Saisit un texte connu, le relit et cherche le réglage qui le rend exact.",
              &ApplicationPage::tryIt);
    buttons->addStretch();
    return buttons;
}

QPushButton* ApplicationPage::addButton(QLayout* row, const char* name, const char* caption,
                                        const char* tip, void (ApplicationPage::*action)()) {
    auto* const button = makeButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this,
            [this, action] { context_.services.deliver([this, action] { (this->*action)(); }); });
    row->addWidget(button);
    return button;
}

int ApplicationPage::row() const { return TblApplications->currentIndex().row(); }

void ApplicationPage::refresh() {
    change([this] { desk_.refresh(context_.services.lastTarget()); });
}

void ApplicationPage::change(const std::function<void()>& change) {
    const int before = std::max(row(), 0);
    const std::string kept = before < static_cast<int>(desk_.rows().size())
                                 ? desk_.rows()[static_cast<std::size_t>(before)].name
                                 : std::string();
    context_.services.deliver([&] { change(); });
    table_.change([] {});
    const int again = desk_.rowOf(kept);
    TblApplications->selectRow(again >= 0 ? again : std::min(before, table_.rowCount() - 1));
    for (int column = 0; column < kApplicationColumns - 1; ++column)
        TblApplications->resizeColumnToContents(column);
    LblCible->setText(toQString(desk_.targetText()));
    showEntry();
}

void ApplicationPage::showEntry() {
    const int shown = row();
    const bool any = shown >= 0 && shown < static_cast<int>(desk_.rows().size());
    FraEntree->setEnabled(any);
    CmdSupprimer->setEnabled(any);
    FraEntree->setTitle(any ? "Entrée " + toQString(desk_.cellOf(shown, 0)).replace("&", "&&")
                            : "Aucune entrée");
    RowList methods{{std::string(kStandard)}, 0};
    for (const MethodName& method : allMethods()) methods.rows.emplace_back(method.name);
    RowList extended{{std::string(kStandard), "non", "oui"}, 0};
    if (any) {
        methods.selected = desk_.methodAt(shown).value_or(-1) + 1;
        extended.selected = desk_.numberAt(shown, MannerKey::kExtended).value_or(-1) + 1;
    }
    showRows(CboMethode, methods);
    showRows(CboEtendues, extended);
    for (const auto& [key, box] : numbers_) {
        const QSignalBlocker quiet(box);
        box->setValue(any ? desk_.numberAt(shown, key).value_or(box->minimum()) : box->minimum());
    }
}

void ApplicationPage::add() {
    std::optional<std::string> name;
    change([&] { name = desk_.add(); });
    if (name) TblApplications->selectRow(desk_.rowOf(*name));
}

void ApplicationPage::remove() {
    change([this] { desk_.remove(row()); });
}

void ApplicationPage::tryIt() {
    const Platform& platform = context_.platform;
    if (!platform.dialogs.confirm(
            "L'essai saisit un texte connu dans le champ où est le curseur, à la place de ce qu'il "
            "contient, "
            "puis le relit par le presse-papiers.\r\n\r\nAprès « Oui », vous avez cinq secondes "
            "pour mettre le curseur dans un champ de texte vide de l'application. Essayer ?"_ansi,
            kApplicationTitle, MessageIcon::kQuestion))
        return;
    std::optional<MannerTrial> trial;
    {
        const During away([this](bool on) {
            if (on)
                window()->showMinimized();
            else
                window()->showNormal();
        });
        platform.events.DoEvents();
        platform.events.Sleep(kTimeToChoose);
        platform.events.DoEvents();
        trial = context_.services.tryManners();
    }
    window()->activateWindow();
    if (trial) change([&] { desk_.take(*trial); });
    refresh();
}

}  // namespace kalvo
