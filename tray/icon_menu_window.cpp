#include "tray/icon_menu_window.h"

#include <QCursor>
#include <QEvent>
#include <cstddef>
#include <utility>

#include "platform/qt/qt_text.h"
#include "platform/qt/xwayland.h"

namespace kalvo {

IconMenuWindow::IconMenuWindow(Actions actions) : actions_(std::move(actions)) {
    setObjectName("mnuIcone");
    for (std::size_t i = 0; i < kMenuCaptions.size(); ++i)
        add(toQString(kMenuCaptions[i]).trimmed(),
            [this, i] { actions_.choose(static_cast<MenuEntry>(i)); });
    addSeparator();
    add("&Tableau de bord", [this] { actions_.showDashboard(); });
    stop_ = add("Arrêter la saisie", [this] { actions_.stopTyping(); });
    retype_ = add("Retaper le dernier lot", [this] { actions_.retypeLast(); });
    connect(this, &QMenu::aboutToShow, this, [this] { enableUseful(); });
    // A popup gets no keys there, and a click beside it does not reach it.
    if (!throughXwayland()) return;
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    connect(this, &QMenu::triggered, this, &QWidget::hide);
}

void IconMenuWindow::popUp() {
    if (!throughXwayland()) {
        popup(QCursor::pos());
        return;
    }
    enableUseful();
    show();
    activateWindow();
}

bool IconMenuWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate && throughXwayland()) hide();
    return QMenu::event(event);
}

QAction* IconMenuWindow::add(const QString& caption, const std::function<void()>& action) {
    QAction* const entry = addAction(caption);
    // Queued: whoever shows the menu is not kept waiting by a window that it opens.
    connect(entry, &QAction::triggered, this, action, Qt::QueuedConnection);
    return entry;
}

void IconMenuWindow::enableUseful() {
    const Useful useful = actions_.useful();
    actions().at(static_cast<int>(MenuEntry::kTransfer))->setEnabled(useful.transfer);
    stop_->setEnabled(useful.stop);
    retype_->setEnabled(useful.retype);
}

}  // namespace kalvo
