#include "editor/windows/actions_window.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QListWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "editor/windows/row_list_view.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

// The beginning of rows that stand for a step.
constexpr std::string_view kStepSign = kRowPrefix.substr(0, 3);

}  // namespace

ActionsWindow::ActionsWindow(QWidget* owner, const SettingsContext& context,
                             std::function<void()> closeSteps)
    : QWidget(owner, Qt::Window), context_(context), closeSteps_(std::move(closeSteps)) {
    setObjectName("FrmActions");
    setAttribute(Qt::WA_QuitOnClose, false);
    LstChamps = new QListWidget;
    LstChamps->setObjectName("LstChamps");
    LstChamps->setToolTip(
        "Les actions du scénario, dans leur ordre ; un double clic modifie une action, le clic "
        "droit propose plus, Ctrl+clic désélectionne.");
    onSelect(LstChamps, [this](int row) { context_.act([&] { context_.actions.select(row); }); });
    onEnter(LstChamps, [this](int row) { context_.act([&] { context_.actions.editStep(row); }); });
    LstChamps->viewport()->installEventFilter(this);
    LstChamps->installEventFilter(this);
    (new QVBoxLayout(this))->addWidget(LstChamps);
    makeMenu();
    new QShortcut(Qt::Key_Escape, this, [this] { close(); });
}

void ActionsWindow::makeMenu() {
    frmpopup = new QMenu(this);
    frmpopup->setObjectName("frmpopup");
    frmpopup->menuAction()->setObjectName("mnuflottant");
    ActionEditor& actions = context_.actions;
    const auto add = [this](const char* name, const QString& text, const QKeySequence& shortcut,
                            const std::function<void()>& operation) {
        auto* const action = frmpopup->addAction(text);
        action->setObjectName(name);
        action->setShortcut(shortcut);
        connect(action, &QAction::triggered, this, [this, operation] { context_.act(operation); });
        addAction(action);
    };
    add("mnuboucle", "Point de &boucle", Qt::CTRL | Qt::Key_B, [&actions] { actions.mnuboucle(); });
    add("mnudepart", "Point de &départ", Qt::CTRL | Qt::Key_D, [&actions] { actions.mnudepart(); });
    frmpopup->addSeparator()->setObjectName("mnutiret");
    add("mnuinsert", "&Insérer", Qt::Key_Insert, [&actions] { actions.mnuinsert(); });
    add("mnusupp", "&Supprimer", Qt::Key_Delete, [&actions] { actions.mnusupp(); });
}

void ActionsWindow::popUp(const QPoint& position) { frmpopup->popup(position); }

// The menu opens when the right button is let go, or with the menu key.
bool ActionsWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched == LstChamps->viewport()) {
        auto* const release = static_cast<QMouseEvent*>(event);
        if (release->button() == Qt::RightButton) popUp(release->globalPosition().toPoint());
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* const menu = static_cast<QContextMenuEvent*>(event);
        if (menu->reason() == QContextMenuEvent::Keyboard && watched == LstChamps)
            popUp(LstChamps->mapToGlobal(
                LstChamps->visualItemRect(LstChamps->currentItem()).center()));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ActionsWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    closeSteps_();
}

void ActionsWindow::refresh() {
    setWindowTitle("Actions : " + toQString(context_.current.scenarioName));
    const RowList& steps = context_.actions.LstChamps;
    showRows(LstChamps, steps);
    const QSignalBlocker quiet(LstChamps);
    for (int row = 0; row < steps.count(); ++row) {
        QListWidgetItem* const item = LstChamps->item(row);
        const bool step = steps.at(row).starts_with(kStepSign) ||
                          (context_.actions.insertMode && row == steps.selected);
        item->setFlags(step ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::ItemIsEnabled);
    }
}

}  // namespace kalvo
