// Tells that typing is suspended, and lets the user decide.
#pragma once

#include <functional>

#include "tray/corner_window.h"

class QLabel;

namespace kalvo {

class SuspensionWindow : public CornerWindow {
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
