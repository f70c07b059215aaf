// A session of the desktop's RemoteDesktop portal, in which keys can be sent.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>
#include <QThread>
#include <memory>
#include <optional>

#include "platform/wayland/portal/portal_consent.h"

namespace kalvo {

// On a connection to the bus of its own: what comes on the one that programs share waits for
// an event loop of the main thread, which commands do not have.
class PortalSession {
public:
    using State = PortalConsent::State;

    // Whether the session has such a portal, for keyboards.
    [[nodiscard]] static bool available();

    PortalSession();
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;
    ~PortalSession();

    void ask() { consent_->ask(); }
    [[nodiscard]] State state() const { return consent_->state(); }
    // Whether the bus is there; it does not come back on this connection.
    [[nodiscard]] bool alive() const { return bus_.isConnected(); }

    // A key by its symbol, into the open session, behind what was sent before; nothing without one.
    void sendKey(xkb_keysym_t symbol, bool down);
    // The same by the code that keyboard maps have for it.
    void sendKeyCode(xkb_keycode_t code, bool down);
    // Waits until the portal has taken the last key.
    void finish();

private:
    void send(const char* method, int key, bool down);

    QString name_;
    QDBusConnection bus_;
    QThread thread_;
    std::unique_ptr<PortalConsent> consent_;
    std::optional<QDBusPendingCall> reply_;  // still to come
};

}  // namespace kalvo
