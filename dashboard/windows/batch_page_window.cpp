#include "dashboard/windows/batch_page_window.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <cstddef>
#include <optional>

#include "dashboard/batch_look.h"
#include "editor/windows/row_list_view.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kTypingRest = 300;  // milliseconds without a key before the list follows

QWidget* labelled(QLabel* label, QWidget* widget) {
    auto* const box = new QWidget;
    auto* const layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(widget);
    label->setBuddy(widget);
    return box;
}

// A list that is read, over a model.
QListView* makeList(const char* name, const char* tip, QStringListModel& model) {
    auto* const list = new QListView;
    list->setObjectName(name);
    list->setToolTip(tip);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setUniformItemSizes(true);
    list->setModel(&model);
    return list;
}

QStringList toQStrings(const std::vector<std::string>& rows) {
    QStringList all;
    for (const std::string& row : rows) all << toQString(row);
    return all;
}

}  // namespace

BatchPage::BatchPage(const DashboardContext& context)
    : context_(context), list_(context.journal), table_(list_) {
    if (context_.journal != nullptr)
        desk_ = std::make_unique<BatchDesk>(context_.platform, context_.state, *context_.journal,
                                            context_.services.retype);
    auto* const parts = new QSplitter(Qt::Vertical);
    parts->addWidget(makeTable());
    parts->addWidget(makeLook());
    parts->setChildrenCollapsible(false);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makeSearch());
    layout->addWidget(parts, 1);
    layout->addLayout(makeButtons());
    searchTimer_.setSingleShot(true);
    searchTimer_.setInterval(kTypingRest);
    connect(&searchTimer_, &QTimer::timeout, this, [this] { search(); });
    refresh();
}

QWidget* BatchPage::makeSearch() {
    TxtChercher = new QLineEdit;
    TxtChercher->setObjectName("TxtChercher");
    TxtChercher->setClearButtonEnabled(true);
    TxtChercher->setPlaceholderText("un code reçu, une date, un terminal, un motif");
    TxtChercher->setToolTip(
        "Ne montre que les lots dont une colonne, ou ce qui a été reçu, contient ce texte.");
    connect(TxtChercher, &QLineEdit::textChanged, this, [this] { searchTimer_.start(); });
    CboEtat =
        makeComboBox("CboEtat", "Ne montre que les lots dans cet état.", [this](int) { search(); });
    RowList states{{"tous"}, 0};
    for (std::size_t state = 0; state < kBatchStates.size(); ++state)
        states.rows.emplace_back(wordFor(static_cast<BatchState>(state)));
    showRows(CboEtat, states);
    LblNombre = new QLabel;
    LblNombre->setObjectName("LblNombre");
    auto* const searchLabel = new QLabel("C&hercher :");
    searchLabel->setBuddy(TxtChercher);
    auto* const stateLabel = new QLabel("É&tat :");
    stateLabel->setBuddy(CboEtat);
    auto* const box = new QWidget;
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(searchLabel);
    row->addWidget(TxtChercher, 1);
    row->addWidget(stateLabel);
    row->addWidget(CboEtat);
    row->addWidget(LblNombre);
    return box;
}

QWidget* BatchPage::makeTable() {
    TblLots = makeRowTable("TblLots", "Les lots du journal, le dernier reçu en haut.", table_);
    TblLots->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(TblLots->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { show(selected()); });
    return TblLots;
}

QWidget* BatchPage::makeLook() {
    QListView* const fields =
        makeList("LstChampsLot", "Ce qui a été reçu, champ par champ.", fields_);
    QListView* const keys =
        makeList("LstFrappe",
                 "Ce que le scénario en service en ferait maintenant ; rien n'est tapé.", keys_);
    auto* const fieldsLabel = new QLabel("Champs reç&us :");
    LblFrappe = new QLabel;
    LblFrappe->setObjectName("LblFrappe");
    auto* const look = new QSplitter(Qt::Horizontal);
    look->setChildrenCollapsible(false);
    look->addWidget(labelled(fieldsLabel, fields));
    look->addWidget(labelled(LblFrappe, keys));
    return look;
}

QLayout* BatchPage::makeButtons() {
    auto* const row = new QHBoxLayout;
    addButton(row, "CmdRetaper", "&Retaper",
              "Rend la main à l'application et y retape tout le lot.",
              [this](const JournalEntry& entry) { desk_->retype(entry); });
    addButton(row, "CmdRetaperDe", "Retaper à partir &de...",
              "De même, mais à partir d'un enregistrement : ce qui précède n'est pas répété.",
              [this](const JournalEntry& entry) { desk_->retypeFrom(entry); });
    addButton(row, "CmdCopier", "&Copier", "Copie ce qui a été reçu dans le presse-papiers.",
              [this](const JournalEntry& entry) { copy(entry); });
    addButton(row, "CmdTexte", "&Enregistrer comme texte...",
              "Écrit dans un fichier ce qui a été reçu, octet pour octet.",
              [this](const JournalEntry& entry) { desk_->saveAsText(entry); });
    row->addStretch();
    return row;
}

QPushButton* BatchPage::addButton(QLayout* row, const char* name, const char* caption,
                                  const char* tip,
                                  const std::function<void(const JournalEntry&)>& action) {
    auto* const button = makeButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this, [this, action] {
        const JournalEntry* const entry = selected();
        if (entry == nullptr) return;
        // The list may be read anew meanwhile.
        context_.services.deliver([&action, batch = *entry] { action(batch); });
    });
    row->addWidget(button);
    buttons_.push_back(button);
    return button;
}

void BatchPage::refresh() {
    // The scenario in force may have changed, too.
    shown_ = 0;
    change([this] { list_.refresh(); });
}

void BatchPage::search() {
    const int state = CboEtat->currentIndex();
    change([&] {
        list_.setFilter(
            {fromQString(TxtChercher->text()),
             state > 0 ? std::optional(static_cast<BatchState>(state - 1)) : std::nullopt});
    });
}

void BatchPage::change(const std::function<void()>& change) {
    const JournalEntry* const before = selected();
    const std::int64_t kept = before == nullptr ? 0 : before->id;
    problem_.clear();
    context_.services.deliver([&] {
        // A message for every look at a damaged journal would never let go of the user.
        try {
            table_.change(change);
        } catch (const RuntimeError& error) {
            problem_ = "Le journal ne se lit pas : " + toQString(error.description());
        }
    });
    const int row = list_.rowOf(kept);
    TblLots->selectRow(row >= 0 ? row : 0);
    // The reason takes what is left.
    for (int column = 0; column < kBatchColumns - 1; ++column)
        TblLots->resizeColumnToContents(column);
    LblNombre->setText(countText());
    show(selected());
}

QString BatchPage::countText() const {
    if (context_.journal == nullptr) return "Les lots ne sont pas gardés.";
    if (!problem_.isEmpty()) return problem_;
    const auto count = list_.rows().size();
    if (count > 0) return QString::number(count) + (count > 1 ? " lots" : " lot");
    const bool all = TxtChercher->text().isEmpty() && CboEtat->currentIndex() <= 0;
    return all ? "Rien n'a encore été reçu." : "Aucun lot ne correspond.";
}

const JournalEntry* BatchPage::selected() const {
    const int row = TblLots->currentIndex().row();
    if (row < 0 || row >= static_cast<int>(list_.rows().size())) return nullptr;
    return &list_.rows()[static_cast<std::size_t>(row)];
}

void BatchPage::show(const JournalEntry* entry) {
    for (QPushButton* const button : buttons_) button->setEnabled(entry != nullptr);
    const std::int64_t id = entry == nullptr ? 0 : entry->id;
    if (id != 0 && id == shown_) return;
    shown_ = id;
    fields_.setStringList({});
    keys_.setStringList({});
    LblFrappe->setText("Touches à ta&per :");
    if (id == 0) return;
    context_.services.deliver([this, id] {
        BatchLook look;
        try {
            look = lookAt(context_.platform, context_.state, context_.journal->bytes(id));
        } catch (const RuntimeError& error) {
            look.fields = {std::string("Ce lot ne se lit pas : "_ansi) + error.description()};
        }
        // Another one may have been selected during a long look.
        if (id != shown_) return;
        fields_.setStringList(toQStrings(look.fields));
        keys_.setStringList(toQStrings(look.keys));
        const QString scenario =
            scenarioInForce(context_.state)
                ? "scénario " + toQString(context_.state.scenario.active.ScenarioName)
                : QString("aucun scénario en service");
        LblFrappe->setText((look.toFile ? "Te&xte à écrire, " : "Touches à ta&per, ") +
                           QString(scenario).replace("&", "&&") + " :");
    });
}

void BatchPage::copy(const JournalEntry& entry) const {
    QApplication::clipboard()->setText(
        toQString(textOf(context_.journal->bytes(entry.id))).replace("\r\n", "\n"));
}

}  // namespace kalvo
