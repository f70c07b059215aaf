#include "editor/windows/settings_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>
#include <utility>

#include "editor/first_site.h"
#include "editor/port/line_status.h"
#include "editor/windows/notes_view.h"
#include "editor/windows/pages/connection_page_window.h"
#include "editor/windows/pages/key_page_window.h"
#include "editor/windows/pages/port_page_window.h"
#include "editor/windows/pages/scenario_page_window.h"
#include "editor/windows/placed_window.h"
#include "editor/windows/steps/steps_window.h"
#include "keys/key_files.h"
#include "platform/dialogs.h"
#include "platform/qt/push_button.h"
#include "platform/qt/qt_text.h"
#include "settings/settings_store.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

// Tabs that can be used without password: the first two.
constexpr int kOpenTabs = 2;

}  // namespace

SettingsWindow::SettingsWindow(const Platform& platform, RunTimeState& state, AccessLock& lock,
                               SettingsServices services)
    : lock_(lock),
      serial_(platform, state),
      actions_(platform, state, current_),
      choices_(platform, state, serial_, actions_),
      scenarios_(platform, state, current_, actions_, choices_),
      particularKeys_(platform, state, choices_, kParticularSection),
      systemKeys_(platform, state, choices_, kSystemSection),
      context_{platform,
               state,
               current_,
               serial_,
               actions_,
               choices_,
               scenarios_,
               std::move(services),
               [this](const std::function<void()>& handler) {
                   confirmation_.clear();
                   context_.services.deliver(handler);
                   refresh();
               },
               [this](const std::string& text) { confirmation_ = text + ". "; },
               [this] {
                   TabParam->setCurrentWidget(connection_);
                   connection_->showApplyDue();
               },
               [this] { close(); }} {
    setObjectName("frmparametrage");
    setWindowTitle("Paramétres <-> Clavier");
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    serial_.ChargeCommunication();
    scenarios_.load();
    makeTabs();
    steps_ = new StepsWindow(this, context_, [this] { closeSteps(); });
    showAccess();
    refresh();
    for (QWidget* const window : placedWindows()) restorePlace(window, platform.registry);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::makeTabs() {
    TabParam = new QTabWidget;
    TabParam->setObjectName("TabParam");
    // All tabs in view: the window is as wide as they are.
    TabParam->setUsesScrollButtons(false);
    connection_ = new ConnectionPage(context_);
    port_ = new PortPage(context_);
    scenario_ = new ScenarioPage(context_);
    TabParam->addTab(connection_, "&Connexion");
    TabParam->addTab(port_, "&Propriétés");
    TabParam->addTab(new KeyPage(context_, {"TlbPart", "keys", "LblTouche"}, particularKeys_),
                     "&Touches particuliéres");
    TabParam->addTab(new KeyPage(context_, {"TlbSys", "systemKey", "Labelsysteme"}, systemKeys_),
                     "Touches &systémes");
    TabParam->addTab(scenario_, "S&cénario");
    connect(TabParam, &QTabWidget::currentChanged, this,
            [this] { context_.act([this] { choices_.readChoices(); }); });
    // The tab widget has these keys, too, but a drop-down list with the focus eats them.
    new QShortcut(Qt::CTRL | Qt::Key_Tab, this, [this] { turnTab(1); });
    new QShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, this, [this] { turnTab(-1); });
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(TabParam);
    LblRemarques = makeNotes("LblRemarquesScenarios");
    layout->addWidget(LblRemarques);
    layout->addLayout(makeFoot());
}

QLayout* SettingsWindow::makeFoot() {
    LblEtat = new QLabel;
    LblEtat->setObjectName("LblEtat");
    LblEtat->setToolTip("Le port et le scénario en service en ce moment.");
    CmdDeverrouiller =
        makeButton("CmdDeverrouiller", "Déve&rrouiller...",
                   "Demande le mot de passe ; les onglets grisés s'ouvrent ensuite.");
    connect(CmdDeverrouiller, &QPushButton::clicked, this, [this] {
        if (context_.services.unlock()) showAccess();
    });
    CmdAssistant =
        makeButton("CmdAssistant", "&Assistant...",
                   "Met en route un premier terminal et un premier scénario, pas à pas.");
    connect(CmdAssistant, &QPushButton::clicked, this, context_.services.showAssistant);
    auto* const foot = new QHBoxLayout;
    foot->addWidget(LblEtat, 1);
    foot->addWidget(CmdAssistant);
    foot->addWidget(CmdDeverrouiller);
    return foot;
}

void SettingsWindow::turnTab(int step) {
    const int count = TabParam->count();
    int tab = TabParam->currentIndex();
    do {
        tab = (tab + step + count) % count;
    } while (!TabParam->isTabEnabled(tab));
    TabParam->setCurrentIndex(tab);
}

void SettingsWindow::showAccess() {
    for (int tab = kOpenTabs; tab < TabParam->count(); ++tab)
        TabParam->setTabEnabled(tab, lock_.accessLevel == 1);
    CmdDeverrouiller->setVisible(lock_.accessLevel != 1);
}

void SettingsWindow::refresh() {
    connection_->refresh();
    port_->refresh();
    scenario_->refresh();
    LblEtat->setText(toQString(confirmation_ + lineStatus(context_.platform, context_.state)));
    CmdAssistant->setVisible(nothingSetUp(context_.platform, context_.state));
    showNotes(LblRemarques, choices_.warnings);
    showSteps();
}

void SettingsWindow::showSteps() {
    const bool shown = scenarios_.stepsShown;
    if (shown) steps_->refresh();
    steps_->setVisible(shown);
}

void SettingsWindow::closeSteps() {
    if (!scenarios_.stepsShown) return;
    scenarios_.stepsShown = false;
    context_.act([this] { actions_.cancelInsert(); });
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
}

bool SettingsWindow::unsaved() const {
    return serial_.unsaved() || scenarios_.unsaved() || particularKeys_.unsaved() ||
           systemKeys_.unsaved();
}

void SettingsWindow::closeEvent(QCloseEvent* event) {
    scenario_->finishEditing();
    if (unsaved() &&
        !context_.platform.dialogs.confirm(
            "Des modifications ne sont pas enregistrées. Fermer sans les enregistrer ?"_ansi,
            kApplicationTitle, MessageIcon::kQuestion)) {
        event->ignore();
        return;
    }
    for (const QWidget* const window : placedWindows()) keepPlace(window);
    if (actions_.insertMode) context_.services.deliver([this] { actions_.cancelInsert(); });
    lock_ = {};
    scenarios_.stepsShown = false;
    showSteps();
    event->accept();
}

std::array<QWidget*, 2> SettingsWindow::placedWindows() { return {this, steps_}; }

}  // namespace kalvo
