// The application that has the keyboard focus, as its windows describe it.
#pragma once

#include <xcb/xcb.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/x11/x11_connection.h"

namespace kalvo {

class FocusedApplication {
public:
    explicit FocusedApplication(const X11Connection& connection);

    // Asks who has the focus; one round trip when it is who had it before. True when it
    // is another window.
    bool look();

    // The window that had it at the last look.
    [[nodiscard]] xcb_window_t focus() const { return focus_; }
    // Its window that says whether the application is alive when it is asked
    // (_NET_WM_PING); XCB_NONE when it has none.
    [[nodiscard]] xcb_window_t answering() const { return answering_; }
    // Its class and its instance (WM_CLASS), as they are; "wine" behind those of a Windows
    // program.
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
    [[nodiscard]] bool underWine() const { return !names_.empty() && names_.back() == kWine; }

private:
    static constexpr std::string_view kWine = "wine";

    void read();
    [[nodiscard]] std::string property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    [[nodiscard]] xcb_window_t parentOf(xcb_window_t window) const;
    void readNames(std::string_view windowClass);

    const X11Connection& connection_;
    xcb_atom_t protocols_;
    xcb_atom_t ping_;
    xcb_window_t focus_ = XCB_NONE;
    xcb_window_t answering_ = XCB_NONE;
    std::vector<std::string> names_;
};

}  // namespace kalvo
