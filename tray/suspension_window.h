// Tells that typing is suspended, and lets the user decide.
#pragma once

#include <QWidget>
#include <functional>

class QLabel;

namespace kalvo {

// Never takes the focus: the application that is typed into keeps it.
class SuspensionWindow : public QWidget {
public:
    struct Actions {
        std::function<void()> resume;
        std::function<void()> restartRecord;
        std::function<void()> abandon;
    };
    explicit SuspensionWindow(const Actions& actions);

    void showText(const QString& text);

private:
    QLabel* text_;
};

}  // namespace kalvo
