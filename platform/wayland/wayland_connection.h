// The connection to the compositor of a Wayland session.
#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

// Whether the environment names a compositor.
[[nodiscard]] bool waylandNamed();

// Whether that compositor takes a connection now.
[[nodiscard]] bool waylandAnswers();

// Owns a connection and what it has bound of it. A lost connection ends nothing: requests
// are dropped from then on.
class WaylandConnection {
public:
    // Connects to the compositor of the environment. Throws RuntimeError 5 when there is
    // none.
    WaylandConnection();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    [[nodiscard]] wl_display* get() const { return display_; }
    // The first seat; null when there is none.
    [[nodiscard]] wl_seat* seat() const { return seat_; }
    // Whether that seat has a keyboard, as last heard.
    [[nodiscard]] bool seatHasKeyboard() const { return seatHasKeyboard_; }

    // Whether the compositor has a global object.
    [[nodiscard]] bool offers(const wl_interface& interface) const {
        return find(interface) != nullptr;
    }
    // A global object of the compositor, in the version it has, `version` at most; null
    // where it has none. The caller destroys it.
    template <typename T>
    [[nodiscard]] T* bind(const wl_interface& interface, std::uint32_t version) {
        return static_cast<T*>(bindGlobal(interface, version));
    }

    // Reads what has arrived without waiting. False once the connection is lost.
    bool alive();
    // The same as far as it is known without reading.
    [[nodiscard]] bool usable() const { return wl_display_get_error(display_) == 0; }

    // To be called behind each request: hands them over before the library's buffer, which
    // may not overflow, is full.
    void requested() {
        if (++unsent_ >= kRequestsAtOnce) flush();
    }
    // Waits until the compositor's socket has taken everything.
    void flush();
    // Waits until the compositor has carried out everything.
    void sync();

    // Where the compositor listens, as the system names the socket; empty when unknown.
    [[nodiscard]] std::string socketName() const;

private:
    static constexpr int kRequestsAtOnce = 64;

    struct Global {
        std::uint32_t name;
        std::string interface;
        std::uint32_t version;
    };

    void listen();
    [[nodiscard]] const Global* find(const wl_interface& interface) const;
    void* bindGlobal(const wl_interface& interface, std::uint32_t version);

    wl_display* display_;
    wl_registry* registry_ = nullptr;
    wl_seat* seat_ = nullptr;
    bool seatHasKeyboard_ = false;
    std::vector<Global> globals_;
    int unsent_ = 0;
};

// "Émulation clavier impossible : ...", RuntimeError 5.
[[noreturn]] void failToConnect(std::string_view reason);

}  // namespace kalvo
