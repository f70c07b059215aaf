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

    // Into the open session, behind what was sent before; nothing without one.
    void sendKey(xkb_keysym_t symbol, bool down);
    // Waits until the portal has taken the last key.
    void finish();

private:
    QString name_;
    QDBusConnection bus_;
    QThread thread_;
    std::unique_ptr<PortalConsent> consent_;
    std::optional<QDBusPendingCall> reply_;  // still to come
};

}  // namespace kalvo
