// The menu of the icon's right button: frmIn's entries and what else the desktop offers.
#pragma once

#include <QMenu>
#include <functional>

#include "tray/tray_menu.h"

namespace kalvo {

class IconMenuWindow : public QMenu {
public:
    // Which of the entries that are not always useful would do something.
    struct Useful {
        bool transfer = false;
        bool stop = false;
        bool retype = false;
    };
    struct Actions {
        // Asked whenever the menu is about to be shown, by us or by the notification area.
        std::function<Useful()> useful;
        std::function<void(MenuEntry)> choose;
        std::function<void()> showDashboard;
        std::function<void()> stopTyping;
        std::function<void()> retypeLast;
    };
    explicit IconMenuWindow(Actions actions);

    // Shows it at the pointer, or where a Wayland compositor puts it.
    void popUp();

protected:
    bool event(QEvent* event) override;

private:
    QAction* add(const QString& caption, const std::function<void()>& action);
    void enableUseful();

    Actions actions_;
    QAction* stop_ = nullptr;
    QAction* retype_ = nullptr;
};

}  // namespace kalvo
