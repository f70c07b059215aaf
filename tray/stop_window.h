// Lets the user stop typing where the session shows nobody the keys of its keyboards.
#pragma once

#include <QTimer>
#include <functional>

#include "tray/corner_window.h"

namespace kalvo {

// Comes up when typing takes a while, and goes with it.
class StopWindow : public CornerWindow {
public:
    StopWindow(const std::function<bool()>& typing, const std::function<void()>& stop);

    // Typing has begun.
    void begin() { timer_.start(); }

private:
    QTimer timer_;
};

}  // namespace kalvo
