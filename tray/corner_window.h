// What the small windows share that come up while something is typed.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class QBoxLayout;

namespace kalvo {

// At the bottom right, above others. Never takes the focus: the application that is typed
// into keeps it.
class CornerWindow : public QWidget {
protected:
    CornerWindow(const QString& name, const QString& title);

    // Where the content goes.
    [[nodiscard]] QBoxLayout* inside() { return inside_; }
    // Into `row`, with what a click does.
    void addButton(QBoxLayout* row, const QString& name, const QString& caption,
                   const std::function<void()>& action);
    // As large as the content wants it to be.
    void showInCorner();

private:
    QBoxLayout* inside_;
};

}  // namespace kalvo
