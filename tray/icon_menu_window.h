// The menu of the icon's right button: frmIn's entries and what else the desktop offers.
#pragma once

#include <QMenu>
#include <functional>

#include "tray/tray_menu.h"

namespace kalvo {

class IconMenuWindow : public QMenu {
public:
    struct Actions {
        std::function<void(MenuEntry)> choose;
        std::function<void()> showDashboard;
        std::function<void()> stopTyping;
        std::function<void()> retypeLast;
    };
    explicit IconMenuWindow(Actions actions);

    // Shows it where the pointer is, with what makes sense now.
    void popUp(bool canTransfer, bool canStop, bool canRetype);

private:
    Actions actions_;
    QAction* stop_ = nullptr;
    QAction* retype_ = nullptr;
};

}  // namespace kalvo
