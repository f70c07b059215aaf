// The windows of all applications of a Wayland session, where the compositor shows them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/shared/file_descriptor.h"
#include "platform/wayland/wayland_connection.h"

struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace kalvo {

// Follows them on a thread of its own: what nobody reads would make the compositor close the
// connection.
class ToplevelWindows {
public:
    // Windows by numbers that are not used again.
    using Window = std::uint32_t;
    static constexpr Window kNone = 0;

    // Throws RuntimeError 5 when there is no compositor or it keeps its windows to itself.
    ToplevelWindows();
    ~ToplevelWindows();
    ToplevelWindows(const ToplevelWindows&) = delete;
    ToplevelWindows& operator=(const ToplevelWindows&) = delete;

    // The one that has the focus, as the compositor has it now.
    [[nodiscard]] Window focused();
    [[nodiscard]] bool exists(Window window);
    // The window that it is a dialog of, at last; itself for any other.
    [[nodiscard]] Window mainWindowOf(Window window);
    // The application's name for itself; empty when it has none.
    [[nodiscard]] std::string applicationOf(Window window);
    // Gives it the focus.
    void activate(Window window);

    [[nodiscard]] bool alive() const { return connection_.usable(); }

private:
    struct Toplevel {
        ToplevelWindows* windows;
        zwlr_foreign_toplevel_handle_v1* handle;
        Window number;
        std::string application;
        Window parent = kNone;
        bool focused = false;
    };
    struct Events;

    void follow();
    void dispatch();
    [[nodiscard]] Window numberOf(zwlr_foreign_toplevel_handle_v1* handle) const;

    WaylandConnection connection_;
    zwlr_foreign_toplevel_manager_v1* manager_;
    wl_event_queue* questions_;
    FileDescriptor end_;  // readable when the thread has to end
    std::mutex mutex_;    // of what follows, and of dispatching
    std::map<Window, std::unique_ptr<Toplevel>> toplevels_;
    Window last_ = kNone;
    std::thread thread_;
};

}  // namespace kalvo
