// The menu window frmIn of the tray icon.
#pragma once

#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>

#include "platform/foreground_window.h"
#include "tray/tray_menu.h"

class QLabel;

namespace kalvo {

class MenuWindow : public QWidget {
public:
    // `choose` is called with the entry the user took, after the menu has closed and the
    // focus has gone back to the application that had it. Entries that would do nothing are
    // grey: `useful` is asked each time the menu is shown.
    MenuWindow(
        ForegroundWindow& foreground, std::function<void(MenuEntry)> choose,
        std::function<bool(MenuEntry)> useful = [](MenuEntry) { return true; });

    // Shows the menu at the corner of the work area, in front of everything.
    void popUp();

    // Takes the place of the icon on a desktop without notification area: the same
    // entries in a window that stays, with the reason above them.
    void stay(const QString& reason);
    // The icon is back: the window is a menu again.
    void leave();

    // Closes the menu if it is open and gives the focus back: something is about to be
    // typed.
    void makeWay();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void addEntry(int index);
    void place(int bottomMargin);
    void unload();
    void take(int index);
    void paintHighlight();
    void onTimer();
    [[nodiscard]] int entryOf(const QObject* watched) const;

    ForegroundWindow& foreground_;
    std::function<void(MenuEntry)> choose_;
    std::function<bool(MenuEntry)> useful_;
    std::array<QLabel*, kMenuCaptions.size()> LblMenu{};
    std::array<QLabel*, kMenuCaptions.size()> picIco{};
    MenuHighlight highlight_;
    QLabel* reason_ = nullptr;
    QTimer Timer1;
    bool stays_ = false;
};

}  // namespace kalvo
