#include "platform/wayland/wayland_connection.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

void failToConnect(std::string_view reason) {
    throw RuntimeError(error_number::kInvalidCall,
                       std::string("Émulation clavier impossible : "_ansi) + std::string(reason));
}

bool waylandNamed() {
    const auto set = [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return set("WAYLAND_DISPLAY") || set("WAYLAND_SOCKET");
}

bool waylandAnswers() {
    wl_display* const display = wl_display_connect(nullptr);
    if (display == nullptr) return false;
    wl_display_disconnect(display);
    return true;
}

WaylandConnection::WaylandConnection()
    : display_(waylandNamed() ? wl_display_connect(nullptr) : nullptr) {
    if (display_ == nullptr) failToConnect("aucun compositeur Wayland n'est accessible."_ansi);
    listen();
}

WaylandConnection::~WaylandConnection() {
    if (seat_ != nullptr) wl_seat_destroy(seat_);
    wl_registry_destroy(registry_);
    wl_display_disconnect(display_);
}

void WaylandConnection::listen() {
    static constexpr wl_registry_listener kGlobals = {
        .global =
            [](void* self, wl_registry*, std::uint32_t name, const char* interface,
               std::uint32_t version) {
                static_cast<WaylandConnection*>(self)->globals_.push_back(
                    {name, interface, version});
            },
        .global_remove =
            [](void* self, wl_registry*, std::uint32_t name) {
                std::erase_if(static_cast<WaylandConnection*>(self)->globals_,
                              [name](const Global& global) { return global.name == name; });
            }};
    static constexpr wl_seat_listener kSeat = {
        .capabilities =
            [](void* self, wl_seat*, std::uint32_t capabilities) {
                static_cast<WaylandConnection*>(self)->seatHasKeyboard_ =
                    (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
            },
        .name = [](void*, wl_seat*, const char*) {}};
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &kGlobals, this);
    sync();
    seat_ = bind<wl_seat>(wl_seat_interface, 1);
    if (seat_ != nullptr) wl_seat_add_listener(seat_, &kSeat, this);
    sync();
}

const WaylandConnection::Global* WaylandConnection::find(const wl_interface& interface) const {
    const auto found = std::find_if(globals_.begin(), globals_.end(), [&](const Global& global) {
        return global.interface == interface.name;
    });
    return found == globals_.end() ? nullptr : &*found;
}

void* WaylandConnection::bindGlobal(const wl_interface& interface, std::uint32_t version) {
    const Global* const found = find(interface);
    if (found == nullptr) return nullptr;
    return wl_registry_bind(registry_, found->name, &interface, std::min(version, found->version));
}

bool WaylandConnection::alive() {
    while (wl_display_prepare_read(display_) != 0)
        if (wl_display_dispatch_pending(display_) < 0) return false;
    pollfd news{wl_display_get_fd(display_), POLLIN, 0};
    if (poll(&news, 1, 0) > 0)
        wl_display_read_events(display_);
    else
        wl_display_cancel_read(display_);
    return wl_display_dispatch_pending(display_) >= 0 && usable();
}

void WaylandConnection::flush() {
    unsent_ = 0;
    while (wl_display_flush(display_) < 0 && errno == EAGAIN) {
        pollfd room{wl_display_get_fd(display_), POLLOUT, 0};
        poll(&room, 1, -1);
    }
}

void WaylandConnection::sync() {
    flush();
    wl_display_roundtrip(display_);
}

std::string WaylandConnection::socketName() const {
    sockaddr_un address{};
    socklen_t size = sizeof address;
    if (getpeername(wl_display_get_fd(display_), reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return {};
    const std::size_t length = size - offsetof(sockaddr_un, sun_path);
    std::string name(address.sun_path, std::min(length, sizeof address.sun_path));
    while (!name.empty() && name.back() == '\0') name.pop_back();
    return name;
}

}  // namespace kalvo
