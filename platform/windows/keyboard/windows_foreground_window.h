// The window that has the keyboard focus, on Windows.
#pragma once

#include "platform/foreground_window.h"

namespace kalvo {

// frontWindow and SetForegroundWindow; our own windows are those of our process.
class WindowsForegroundWindow : public ForegroundWindow {
public:
    void remember() override;
    void giveBack() override;
    [[nodiscard]] bool foreign() override;

private:
    void* remembered_ = nullptr;
};

}  // namespace kalvo
