// Lets the user stop typing where the session shows nobody the keys of its keyboards.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

namespace kalvo {

// Comes up when typing takes a while, and goes with it. Never takes the focus.
class StopWindow : public QWidget {
public:
    StopWindow(const std::function<bool()>& typing, const std::function<void()>& stop);

    // Typing has begun.
    void begin() { timer_.start(); }

private:
    void place();

    QTimer timer_;
};

}  // namespace kalvo
