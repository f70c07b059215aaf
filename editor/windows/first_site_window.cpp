#include "editor/windows/first_site_window.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "core/during.h"
#include "editor/keys/key_listing.h"
#include "editor/port/port_choice.h"
#include "editor/warning.h"
#include "editor/windows/notes_view.h"
#include "editor/windows/output_file_window.h"
#include "editor/windows/row_list_view.h"
#include "platform/qt/qt_text.h"
#include "settings/options.h"
#include "text/line_splitter.h"

namespace kalvo {

namespace {

constexpr int kRoomForAccent = 3;        // pixels
constexpr int kTimeBetweenLooks = 1000;  // milliseconds
constexpr int kSpareLines = 4;

enum Page { kTerminal, kScenario, kTest };
constexpr std::array<const char*, 3> kTitles = {
    "Étape 1 sur 3 : le terminal", "Étape 2 sur 3 : ce qu'il envoie, et ce qu'on en fait",
    "Étape 3 sur 3 : l'essai"};

QLabel* explanation(const QString& text) {
    auto* const label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

// A button under its object name; Enter presses the default button alone.
QPushButton* button(const QString& name, const QString& text, const QString& tip,
                    const std::function<void()>& press) {
    auto* const made = new QPushButton(text);
    made->setObjectName(name);
    made->setToolTip(tip);
    made->setAutoDefault(false);
    QObject::connect(made, &QPushButton::clicked, made, press);
    return made;
}

QString advisedTip() {
    QString tip = "Met à 1, dans Options.ini :";
    for (const OptionInfo& info : allOptions())
        if (info.advisable) tip += "\n" + toQString(info.key) + " : " + toQString(info.sentence);
    return tip;
}

std::vector<std::string> fileLines(std::string_view text) {
    std::vector<std::string> lines;
    visitLines(text, [&](std::string_view line) { lines.emplace_back(line); });
    return lines;
}

}  // namespace

FirstSiteWindow::FirstSiteWindow(QWidget* owner, const Platform& platform, RunTimeState& state,
                                 SettingsServices services, std::function<void(bool)> finished)
    : QDialog(owner),
      platform_(platform),
      services_(std::move(services)),
      finished_(std::move(finished)),
      site_(platform, state) {
    setObjectName("frmAssistant");
    setWindowTitle("Assistant de mise en route");
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowModality(Qt::WindowModal);
    LblEtape = new QLabel;
    LblEtape->setObjectName("LblEtape");
    QFont bold = LblEtape->font();
    bold.setBold(true);
    LblEtape->setFont(bold);
    // The accent of a bold capital stands above the line the font asks for.
    LblEtape->setContentsMargins(0, kRoomForAccent, 0, 0);
    pages_ = new QStackedWidget;
    pages_->addWidget(terminalPage());
    pages_->addWidget(scenarioPage());
    pages_->addWidget(testPage());
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(LblEtape);
    layout->addWidget(pages_, 1);
    layout->addWidget(foot());
    const auto look = [this] {
        if (pages_->currentIndex() != kTerminal) return;
        act([this] { site_.followDevices(services_.portDevices()); });
    };
    connect(&plugging_, &QTimer::timeout, this, look);
    plugging_.start(kTimeBetweenLooks);
    showPage(kTerminal);
    look();
    // Whole on a small screen at any scale: the lists take what is left.
    resize(sizeHint().width(),
           minimumSizeHint().height() + kSpareLines * fontMetrics().lineSpacing());
}

QWidget* FirstSiteWindow::terminalPage() {
    CboTypeTerminal =
        makeComboBox("CboTypeTerminal", "Le type du terminal, qui décide de la façon de recevoir.",
                     [this](int row) { act([&] { site_.serial.chooseProtocol(row); }); });
    CboPortTerminal = makeComboBox(
        "CboPortTerminal", "Le port du terminal ; les ports présents montrent leur appareil.",
        [this](int row) { act([&] { site_.choosePort(row); }); });
    CboPortTerminal->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    CboPortTerminal->setMinimumContentsLength(30);
    CboVitesseTerminal = makeComboBox(
        "CboVitesseTerminal", "La vitesse réglée dans le terminal, en bits par seconde.",
        [this](int row) { act([&] { site_.serial.chooseSpeed(row); }); });
    auto* const page = new QWidget;
    auto* const rows = new QFormLayout(page);
    rows->addRow(
        explanation("Branchez le terminal : son port est choisi de lui-même s'il est le "
                    "seul à apparaître."));
    rows->addRow("&Type du terminal :", CboTypeTerminal);
    rows->addRow("P&ort :", CboPortTerminal);
    rows->addRow("&Vitesse :", CboVitesseTerminal);
    rows->addRow(
        explanation("Le reste de la ligne est mis à 8 bits, sans parité, 1 bit d'arrêt, "
                    "sans contrôle de flux ; l'onglet Propriétés du paramétrage le change."));
    return page;
}

QWidget* FirstSiteWindow::scenarioPage() {
    TxtExemple = new QPlainTextEdit(toQString(site_.sample));
    TxtExemple->setObjectName("TxtExemple");
    TxtExemple->setTabChangesFocus(true);
    TxtExemple->setMinimumHeight(3 * fontMetrics().lineSpacing());
    TxtExemple->setToolTip("Un enregistrement comme le terminal l'envoie, un champ par ligne.");
    connect(TxtExemple, &QPlainTextEdit::textChanged, this,
            [this] { act([this] { site_.sample = fromQString(TxtExemple->toPlainText()); }); });
    CboModele = makeComboBox("CboModele", "Ce qui est fait de chaque enregistrement.",
                             [this](int row) { act([&] { site_.templates.selected = row; }); });
    LblRemarque = makeNotes("LblRemarque");
    TxtNom = new QLineEdit(toQString(site_.scenarioName));
    TxtNom->setObjectName("TxtNom");
    TxtNom->setToolTip("Le nom du scénario, sans apostrophe ; c'est aussi celui de son fichier.");
    connect(TxtNom, &QLineEdit::textChanged, this,
            [this](const QString& text) { site_.scenarioName = fromQString(text); });
    pathRow_ = pathRow();
    auto* const page = new QWidget;
    auto* const rows = new QFormLayout(page);
    auto* const sampleLabel = new QLabel("&Exemple d'enregistrement (un champ par ligne) :");
    sampleLabel->setBuddy(TxtExemple);
    LblFichier = new QLabel("&Fichier :");
    LblFichier->setBuddy(TxtFichier);
    rows->addRow(sampleLabel);
    rows->addRow(TxtExemple);
    rows->addRow("&Modèle :", CboModele);
    rows->addRow(LblRemarque);
    rows->addRow(LblFichier, pathRow_);
    rows->addRow("&Nom du scénario :", TxtNom);
    return page;
}

QWidget* FirstSiteWindow::pathRow() {
    TxtFichier = new QLineEdit;
    TxtFichier->setObjectName("TxtFichier");
    TxtFichier->setToolTip("Le fichier que le scénario écrit, avec son dossier.");
    connect(TxtFichier, &QLineEdit::textChanged, this,
            [this](const QString& text) { site_.outputPath = fromQString(text); });
    auto* const CmdParcourir = button("CmdParcourir", "Parco&urir...", kOutputFileTip, [this] {
        const QString chosen = chooseOutputFile(this, TxtFichier->text());
        if (!chosen.isEmpty()) TxtFichier->setText(chosen);
    });
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(TxtFichier, 1);
    layout->addWidget(CmdParcourir);
    return row;
}

QWidget* FirstSiteWindow::testPage() {
    LblApercu = new QLabel;
    LstApercu = new RowListView("LstApercu", "Ce que le scénario fait de l'exemple, dans l'ordre.");
    LblApercu->setBuddy(LstApercu);
    CmdEssayer = button("CmdEssayer", "&Essayer",
                        "Laisse deux secondes pour passer dans l'application visée, puis frappe "
                        "l'exemple (F5).",
                        [this] { runTest(); });
    CmdEssayer->setShortcut(Qt::Key_F5);
    ChkConseilles = new QCheckBox("&Réglages conseillés");
    ChkConseilles->setObjectName("ChkConseilles");
    ChkConseilles->setToolTip(advisedTip());
    connect(ChkConseilles, &QCheckBox::toggled, this,
            [this](bool ticked) { act([&] { site_.advisedOptions = ticked; }); });
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(LblApercu);
    layout->addWidget(LstApercu, 1);
    layout->addWidget(CmdEssayer, 0, Qt::AlignLeft);
    layout->addWidget(ChkConseilles);
    layout->addWidget(
        explanation("« Terminer » enregistre tout, met le scénario en service et ouvre "
                    "le port. Rien n'est enregistré avant."));
    return page;
}

QWidget* FirstSiteWindow::foot() {
    CmdPrecedent = button("CmdPrecedent", "&Précédent", "Revient à l'étape d'avant.",
                          [this] { showPage(pages_->currentIndex() - 1); });
    CmdSuivant = button("CmdSuivant", "&Suivant", "Passe à l'étape d'après (Entrée).",
                        [this] { act([this] { forward(); }); });
    CmdTerminer = button("CmdTerminer", "Ter&miner", "Enregistre tout et ouvre le port (Entrée).",
                         [this] { services_.deliver([this] { finish(); }); });
    auto* const CmdAbandonner =
        button("CmdAbandonner", "&Abandonner", "Ferme l'assistant sans rien enregistrer (Échap).",
               [this] { reject(); });
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CmdAbandonner);
    layout->addStretch();
    for (QPushButton* const one : {CmdPrecedent, CmdSuivant, CmdTerminer}) layout->addWidget(one);
    return row;
}

void FirstSiteWindow::showPage(int page) {
    const std::array<QWidget*, 3> first = {CboTypeTerminal, TxtExemple, CmdEssayer};
    pages_->setCurrentIndex(page);
    LblEtape->setText(kTitles[static_cast<std::size_t>(page)]);
    CmdPrecedent->setEnabled(page > kTerminal);
    CmdSuivant->setVisible(page < kTest);
    CmdTerminer->setVisible(page == kTest);
    (page == kTest ? CmdTerminer : CmdSuivant)->setDefault(true);
    first[static_cast<std::size_t>(page)]->setFocus();
    refresh();
}

void FirstSiteWindow::forward() {
    const std::string refusal =
        pages_->currentIndex() == kTerminal ? site_.refusalOfTerminal() : site_.refusalOfScenario();
    if (refusal.empty())
        showPage(pages_->currentIndex() + 1);
    else
        showWarning(platform_.dialogs, refusal);
}

void FirstSiteWindow::finish() {
    // The site may have changed since the pages were left.
    const std::string refusal = site_.refusalOfScenario();
    if (!refusal.empty()) {
        showWarning(platform_.dialogs, refusal);
        return;
    }
    const bool portOpen = site_.finish();
    accept();
    finished_(portOpen);
}

// Nothing of ours stands before the application that is typed into.
void FirstSiteWindow::runTest() {
    act([this] {
        QWidget* const owner = parentWidget();
        const During test([&](bool on) {
            for (QWidget* const one : {owner, static_cast<QWidget*>(this)})
                if (one != nullptr && !on) one->showNormal();
        });
        site_.test({.minimise =
                        [&] {
                            showMinimized();
                            if (owner != nullptr) owner->showMinimized();
                        },
                    .targetReady = services_.targetReady});
    });
}

void FirstSiteWindow::act(const std::function<void()>& handler) {
    services_.deliver(handler);
    refresh();
}

void FirstSiteWindow::refresh() {
    showRows(CboTypeTerminal, site_.serial.CboProtocol);
    if (!CboPortTerminal->view()->isVisible())
        showRows(CboPortTerminal, portsWithDevices(site_.serial.CboPort, site_.devices()));
    showRows(CboVitesseTerminal, site_.serial.CboVitesse);
    showRows(CboModele, site_.templates);
    const std::string remark = site_.remark();
    showNotes(LblRemarque, {}, remark.empty() ? std::vector<std::string>{} : std::vector{remark});
    LblFichier->setVisible(site_.toFile());
    pathRow_->setVisible(site_.toFile());
    if (pages_->currentIndex() == kTest) services_.deliver([this] { showPreview(); });
}

void FirstSiteWindow::showPreview() {
    const ScriptPreview preview = site_.preview();
    LblApercu->setText(preview.toFile ? "&Texte écrit dans le fichier :" : "&Touches frappées :");
    CmdEssayer->setVisible(!preview.toFile);
    LstApercu->showRows(
        plainRows(preview.toFile ? fileLines(preview.script)
                                 : listKeys(preview.script, preview.timerPause, kMostKeysShown)));
}

}  // namespace kalvo
