// Tool bars whose buttons the keyboard reaches.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <functional>
#include <vector>

class QToolBar;

namespace kalvo {

struct ToolButton {
    QString text;
    QString icon;  // the name of a pictogram
    QString tip;   // one sentence; the shortcut is part of it
    QList<QKeySequence> shortcuts;
    std::function<void()> run;
};

// A bar under its object name; its actions() are the buttons in order. A shortcut works
// while the bar is visible.
[[nodiscard]] QToolBar* makeToolBar(const QString& name, const std::vector<ToolButton>& buttons);

}  // namespace kalvo
