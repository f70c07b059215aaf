#include "tray/icon_menu_window.h"

#include <QCursor>
#include <cstddef>
#include <utility>

#include "platform/qt/qt_text.h"

namespace kalvo {

IconMenuWindow::IconMenuWindow(Actions actions) : actions_(std::move(actions)) {
    setObjectName("mnuIcone");
    for (std::size_t i = 0; i < kMenuCaptions.size(); ++i)
        connect(addAction(toQString(kMenuCaptions[i]).trimmed()), &QAction::triggered, this,
                [this, i] { actions_.choose(static_cast<MenuEntry>(i)); });
    addSeparator();
    connect(addAction("&Tableau de bord"), &QAction::triggered, this,
            [this] { actions_.showDashboard(); });
    stop_ = addAction("Arrêter la saisie");
    connect(stop_, &QAction::triggered, this, [this] { actions_.stopTyping(); });
    retype_ = addAction("Retaper le dernier lot");
    connect(retype_, &QAction::triggered, this, [this] { actions_.retypeLast(); });
}

void IconMenuWindow::popUp(bool canTransfer, bool canStop, bool canRetype) {
    actions().at(static_cast<int>(MenuEntry::kTransfer))->setEnabled(canTransfer);
    stop_->setEnabled(canStop);
    retype_->setEnabled(canRetype);
    popup(QCursor::pos());
}

}  // namespace kalvo
