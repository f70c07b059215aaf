// The window that has the keyboard focus.
#pragma once

namespace kalvo {

// Our own windows may take the focus while the user works in them; before anything is
// typed, the application that had it gets it back.
class ForegroundWindow {
public:
    virtual ~ForegroundWindow() = default;

    // Notes the foreign window that has the focus now; one of our own changes nothing.
    virtual void remember() = 0;
    // Gives the focus back to the window noted last, if it still exists and one of our
    // own windows, or none, has the focus.
    virtual void giveBack() = 0;
    // Whether an application of the user's has the focus now.
    [[nodiscard]] virtual bool foreign() = 0;
};

}  // namespace kalvo
