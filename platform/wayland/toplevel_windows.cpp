#include "platform/wayland/toplevel_windows.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <span>

#include "text/ansi_text.h"
#include "text/runtime_error.h"
#include "wlr-foreign-toplevel-management-unstable-v1.h"

namespace kalvo {

// What the compositor tells; always within dispatch().
struct ToplevelWindows::Events {
    using Handle = zwlr_foreign_toplevel_handle_v1;

    static void onToplevel(void* self, zwlr_foreign_toplevel_manager_v1*, Handle* handle) {
        auto& windows = *static_cast<ToplevelWindows*>(self);
        const Window number = ++windows.last_;
        auto& toplevel = windows.toplevels_[number];
        toplevel = std::make_unique<Toplevel>(
            Toplevel{.windows = &windows, .handle = handle, .number = number, .application = {}});
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kToplevel, toplevel.get());
    }
    static void onApplication(void* self, Handle*, const char* name) {
        static_cast<Toplevel*>(self)->application = name;
    }
    static void onState(void* self, Handle*, wl_array* states) {
        const std::span all(static_cast<const std::uint32_t*>(states->data),
                            states->size / sizeof(std::uint32_t));
        static_cast<Toplevel*>(self)->focused =
            std::find(all.begin(), all.end(), ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) !=
            all.end();
    }
    static void onParent(void* self, Handle*, Handle* parent) {
        auto* const toplevel = static_cast<Toplevel*>(self);
        toplevel->parent = toplevel->windows->numberOf(parent);
    }
    static void onClosed(void* self, Handle* handle) {
        const auto* const toplevel = static_cast<Toplevel*>(self);
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
        toplevel->windows->toplevels_.erase(toplevel->number);
    }

    static constexpr zwlr_foreign_toplevel_manager_v1_listener kManager = {
        .toplevel = onToplevel, .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {}};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener kToplevel = {
        .title = [](void*, Handle*, const char*) {},
        .app_id = onApplication,
        .output_enter = [](void*, Handle*, wl_output*) {},
        .output_leave = [](void*, Handle*, wl_output*) {},
        .state = onState,
        .done = [](void*, Handle*) {},
        .closed = onClosed,
        .parent = onParent};
};

ToplevelWindows::ToplevelWindows()
    : manager_(connection_.bind<zwlr_foreign_toplevel_manager_v1>(
          zwlr_foreign_toplevel_manager_v1_interface, 3)),
      end_(eventfd(0, EFD_CLOEXEC)) {
    if (manager_ == nullptr)
        throw RuntimeError(
            error_number::kInvalidCall,
            std::string(
                "Ce bureau Wayland ne dit rien de ses fenêtres : celle qui est devant n'est pas surveillée."_ansi));
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &Events::kManager, this);
    questions_ = wl_display_create_queue(connection_.get());
    // What windows there are, then what they are.
    connection_.sync();
    connection_.sync();
    thread_ = std::thread([this] { follow(); });
}

ToplevelWindows::~ToplevelWindows() {
    eventfd_write(end_.number(), 1);
    thread_.join();
    for (const auto& [number, toplevel] : toplevels_)
        zwlr_foreign_toplevel_handle_v1_destroy(toplevel->handle);
    zwlr_foreign_toplevel_manager_v1_destroy(manager_);
    wl_event_queue_destroy(questions_);
}

void ToplevelWindows::follow() {
    wl_display* const display = connection_.get();
    std::array<pollfd, 2> news = {
        {{wl_display_get_fd(display), POLLIN, 0}, {end_.number(), POLLIN, 0}}};
    while (connection_.usable()) {
        while (wl_display_prepare_read(display) != 0) dispatch();
        poll(news.data(), news.size(), -1);
        if (news[1].revents != 0) {
            wl_display_cancel_read(display);
            return;
        }
        wl_display_read_events(display);
        dispatch();
    }
}

void ToplevelWindows::dispatch() {
    const std::lock_guard lock(mutex_);
    wl_display_dispatch_pending(connection_.get());
}

ToplevelWindows::Window ToplevelWindows::focused() {
    // Behind the answer everything told before it has arrived.
    wl_display_roundtrip_queue(connection_.get(), questions_);
    dispatch();
    const std::lock_guard lock(mutex_);
    for (const auto& [number, toplevel] : toplevels_)
        if (toplevel->focused) return number;
    return kNone;
}

bool ToplevelWindows::exists(Window window) {
    const std::lock_guard lock(mutex_);
    return toplevels_.contains(window);
}

ToplevelWindows::Window ToplevelWindows::mainWindowOf(Window window) {
    const std::lock_guard lock(mutex_);
    // No more steps than windows, whatever the compositor says.
    for (std::size_t i = 0; i < toplevels_.size(); ++i) {
        const auto found = toplevels_.find(window);
        if (found == toplevels_.end() || found->second->parent == kNone) return window;
        window = found->second->parent;
    }
    return window;
}

std::string ToplevelWindows::applicationOf(Window window) {
    const std::lock_guard lock(mutex_);
    const auto found = toplevels_.find(window);
    return found == toplevels_.end() ? std::string() : found->second->application;
}

void ToplevelWindows::activate(Window window) {
    const std::lock_guard lock(mutex_);
    const auto found = toplevels_.find(window);
    if (found == toplevels_.end() || connection_.seat() == nullptr) return;
    zwlr_foreign_toplevel_handle_v1_activate(found->second->handle, connection_.seat());
    connection_.flush();
}

ToplevelWindows::Window ToplevelWindows::numberOf(zwlr_foreign_toplevel_handle_v1* handle) const {
    for (const auto& [number, toplevel] : toplevels_)
        if (toplevel->handle == handle) return number;
    return kNone;
}

}  // namespace kalvo
