#include "editor/windows/steps/actions_pane.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "editor/windows/row_list_view.h"
#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

constexpr int kLeastWidth = 170;
constexpr char16_t kFigureSpace = 0x2007;  // as wide as a digit

// The beginning of rows that stand for a step.
constexpr std::string_view kStepSign = kRowPrefix.substr(0, 3);

QString numbered(int step, int digits, const QString& text) {
    return QString("%1  %2").arg(step, digits, 10, QChar(kFigureSpace)).arg(text);
}

// Steps with their numbers, and what the gap of an insert waits for.
std::vector<ShownRow> shownSteps(const ActionEditor& actions) {
    const RowList& list = actions.LstChamps;
    const int digits = static_cast<int>(std::to_string(list.count()).size());
    std::vector<ShownRow> rows;
    for (int row = 0; row < list.count(); ++row) {
        const bool gap = actions.insertMode && row == list.selected;
        const bool step = list.at(row).starts_with(kStepSign);
        if (gap)
            rows.push_back(
                {.text = numbered(row + 1, digits, "← ici : la touche que vous choisirez"),
                 .marked = true});
        else if (step)
            rows.push_back(
                {.text = numbered(row + 1, digits, toQString(list.at(row))), .movable = true});
        else
            rows.push_back({.text = toQString(list.at(row)), .selectable = false});
    }
    return rows;
}

}  // namespace

ActionsPane::ActionsPane(const SettingsContext& context) : context_(context) {
    setObjectName("FrmActions");
    setMinimumWidth(kLeastWidth);
    LstChamps = new RowListView(
        "LstChamps",
        "Les actions du scénario, dans leur ordre ; un double clic modifie une action, le clic "
        "droit propose plus, Ctrl+clic désélectionne. Tirez une action à la souris, ou Alt+Haut et "
        "Alt+Bas, pour la déplacer.");
    LstChamps->onSelect = [this](int row) { context_.act([&] { context_.actions.select(row); }); };
    LstChamps->onEnter = [this](int row) { context_.act([&] { context_.actions.editStep(row); }); };
    LstChamps->onMove = [this](int row, int to) {
        context_.act([&] { context_.actions.moveStep(row, to); });
    };
    LstChamps->letsMove();
    LstChamps->viewport()->installEventFilter(this);
    LstChamps->installEventFilter(this);
    setFocusProxy(LstChamps);
    auto* const label = new QLabel("&Actions :");
    label->setBuddy(LstChamps);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(LstChamps);
    makeMenu();
}

void ActionsPane::makeMenu() {
    frmpopup = new QMenu(this);
    frmpopup->setObjectName("frmpopup");
    frmpopup->menuAction()->setObjectName("mnuflottant");
    ActionEditor& actions = context_.actions;
    addEntry("mnuboucle", "Point de &boucle", Qt::CTRL | Qt::Key_B,
             [&actions] { actions.mnuboucle(); });
    addEntry("mnudepart", "Point de &départ", Qt::CTRL | Qt::Key_D,
             [&actions] { actions.mnudepart(); });
    frmpopup->addSeparator()->setObjectName("mnutiret");
    addEntry("mnuinsert", "&Insérer", Qt::Key_Insert, [&actions] { actions.mnuinsert(); });
    addEntry("mnusupp", "&Supprimer", Qt::Key_Delete, [&actions] { actions.mnusupp(); });
    frmpopup->addSeparator();
    addEntry("mnumonter", "&Monter", Qt::ALT | Qt::Key_Up, [&actions] { actions.moveUp(); });
    addEntry("mnudescendre", "Des&cendre", Qt::ALT | Qt::Key_Down,
             [&actions] { actions.moveDown(); });
    addEntry("mnuannuler", "&Annuler le dernier changement", QKeySequence::Undo,
             [&actions] { actions.undo(); });
    // A key that was picked by mistake is taken back from where it was picked.
    frmpopup->actions().constLast()->setShortcutContext(Qt::WindowShortcut);
}

// The shortcuts work in this pane: Delete pressed beside it deletes no step.
void ActionsPane::addEntry(const char* name, const QString& text, const QKeySequence& shortcut,
                           const std::function<void()>& operation) {
    auto* const action = frmpopup->addAction(text);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, [this, operation] { context_.act(operation); });
    addAction(action);
}

// The menu opens when the right button is let go, or with the menu key.
bool ActionsPane::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched == LstChamps->viewport()) {
        auto* const release = static_cast<QMouseEvent*>(event);
        if (release->button() == Qt::RightButton)
            frmpopup->popup(release->globalPosition().toPoint());
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* const menu = static_cast<QContextMenuEvent*>(event);
        if (menu->reason() == QContextMenuEvent::Keyboard && watched == LstChamps)
            frmpopup->popup(LstChamps->viewport()->mapToGlobal(
                LstChamps->visualRect(LstChamps->currentIndex()).center()));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ActionsPane::refresh() {
    LstChamps->showRows(shownSteps(context_.actions), context_.actions.LstChamps.selected);
}

}  // namespace kalvo
