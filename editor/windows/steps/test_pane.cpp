#include "editor/windows/steps/test_pane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QToolBar>
#include <QVBoxLayout>
#include <utility>

#include "editor/keys/key_listing.h"
#include "editor/script_preview.h"
#include "editor/test_run.h"
#include "editor/windows/notes_view.h"
#include "editor/windows/row_list_view.h"
#include "platform/dialogs.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr int kTypingRest = 200;           // milliseconds without a key before the preview follows
constexpr int kFewestLines = 3;            // of each box, on a small screen
constexpr qsizetype kMostScript = 20'000;  // characters shown

}  // namespace

TestPane::TestPane(const SettingsContext& context, std::function<void()> closeSteps)
    : context_(context), closeSteps_(std::move(closeSteps)) {
    setObjectName("FrmTest");
    previewTimer_.setSingleShot(true);
    previewTimer_.setInterval(kTypingRest);
    connect(&previewTimer_, &QTimer::timeout, this,
            [this] { context_.services.deliver([this] { showPreview(); }); });
    // With many remarks on a small screen the rest stays within reach.
    auto* const area = new QScrollArea;
    area->setWidget(controls());
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumWidth(area->widget()->minimumSizeHint().width());
    setFocusProxy(TxtTrame);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
}

QWidget* TestPane::controls() {
    auto* const bar = makeToolBar(
        "TlbScenarios",
        {{"Tester",
          "demarrer",
          "Demande les champs de quatre trames, laisse deux secondes pour changer de fenêtre, puis "
          "frappe le résultat (F5).",
          {Qt::Key_F5},
          [this] { runTest(); }},
         {"Fermer",
          "fermer",
          "Ferme cette fenêtre et revient au paramétrage (Échap).",
          {Qt::Key_Escape},
          closeSteps_}});
    TxtTrame = new QPlainTextEdit("REF001\n12");
    TxtTrame->setObjectName("TxtTrame");
    TxtTrame->setTabChangesFocus(true);
    TxtTrame->setToolTip("Une trame d'exemple, un champ par ligne ; l'aperçu la suit.");
    connect(TxtTrame, &QPlainTextEdit::textChanged, this, [this] { previewTimer_.start(); });
    auto* const CmdDerniereTrame =
        makeButton("CmdDerniereTrame", "&Dernière trame reçue",
                   "Prend comme exemple la dernière trame reçue d'un terminal.");
    connect(CmdDerniereTrame, &QPushButton::clicked, this, [this] { takeLastFrame(); });
    TxtScript = new QPlainTextEdit;
    TxtScript->setObjectName("TxtScript");
    TxtScript->setReadOnly(true);
    TxtScript->setTabChangesFocus(true);
    TxtScript->setToolTip("Ce que le scénario fait de la trame d'exemple ; rien n'est frappé.");
    LstFrappe = new RowListView("LstFrappe", "Les touches que le script frappe, dans leur ordre.");
    for (QAbstractScrollArea* const box :
         std::initializer_list<QAbstractScrollArea*>{TxtTrame, TxtScript, LstFrappe})
        box->setMinimumHeight(kFewestLines * fontMetrics().lineSpacing());
    auto* const frameLabel = new QLabel("Trame d'&exemple, un champ par ligne :");
    frameLabel->setBuddy(TxtTrame);
    LblScript = new QLabel;
    LblScript->setObjectName("LblScript");
    LblScript->setBuddy(TxtScript);
    LblRemarques = makeNotes("LblRemarques");
    auto* const keysLabel = new QLabel("&Touches frappées :");
    keysLabel->setBuddy(LstFrappe);

    auto* const column = new QWidget;
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    layout->addWidget(frameLabel);
    layout->addWidget(TxtTrame, 1);
    layout->addWidget(CmdDerniereTrame, 0, Qt::AlignLeft);
    layout->addWidget(LblScript);
    layout->addWidget(TxtScript, 1);
    layout->addWidget(LblRemarques);
    layout->addWidget(keysLabel);
    layout->addWidget(LstFrappe, 2);
    return column;
}

void TestPane::refresh() { showPreview(); }

std::string TestPane::sampleFrame() const {
    return fromQString(TxtTrame->toPlainText().replace("\n", "\r\n") + "\r\n");
}

void TestPane::showPreview() {
    // An open gap would end the scenario early.
    if (context_.actions.insertMode) return;
    std::vector<std::string> keys;
    try {
        const ScriptPreview preview = previewScript(context_.platform, context_.state,
                                                    context_.current.scenarioNumber, sampleFrame());
        showNotes(LblRemarques, preview.warnings, preview.options);
        LblScript->setText(preview.toFile ? "Te&xte écrit dans le fichier :"
                                          : "&Script de touches :");
        TxtScript->setPlainText(toQString(preview.script).left(kMostScript));
        if (!preview.toFile) keys = listKeys(preview.script, preview.timerPause, kMostKeysShown);
    } catch (const RuntimeError& error) {
        TxtScript->setPlainText(toQString(error.description()));
    }
    LstFrappe->showRows(plainRows(keys));
}

void TestPane::takeLastFrame() {
    if (context_.state.ReceivedData.empty()) {
        context_.platform.dialogs.message("Aucune trame n'a encore été reçue d'un terminal."_ansi,
                                          kApplicationTitle, MessageIcon::kInformation);
        return;
    }
    TxtTrame->setPlainText(
        toQString(context_.state.ReceivedData).replace("\r\n", "\n").replace('\r', '\n').trimmed());
}

void TestPane::runTest() {
    context_.act([this] {
        context_.actions.cancelInsert();
        runScenarioTest(context_.platform, context_.state, context_.current,
                        {.minimise = [this] { window()->parentWidget()->showMinimized(); },
                         .targetReady = context_.services.targetReady});
    });
}

}  // namespace kalvo
