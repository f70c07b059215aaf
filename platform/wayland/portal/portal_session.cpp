#include "platform/wayland/portal/portal_session.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QVariantMap>

namespace kalvo {

namespace {

constexpr unsigned kKeyboard = 1;
constexpr int kFirstCode = 8;       // of keyboard maps, where the kernel has 0
constexpr int kTimeOfReply = 5000;  // milliseconds

QString newName() {
    static int sessions = 0;
    return QString("kalvo-portal-%1").arg(++sessions);
}

}  // namespace

bool PortalSession::available() {
    const QString name = newName();
    bool found = false;
    {
        const QDBusConnection bus =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        found = bus.isConnected() && (portalProperty(bus, "AvailableDeviceTypes") & kKeyboard) != 0;
    }
    QDBusConnection::disconnectFromBus(name);
    return found;
}

PortalSession::PortalSession()
    : name_(newName()),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)),
      consent_(std::make_unique<PortalConsent>(bus_)) {
    consent_->moveToThread(&thread_);
    thread_.start();
}

// The portal ends the session with the connection.
PortalSession::~PortalSession() {
    thread_.quit();
    thread_.wait();
    consent_.reset();
    reply_.reset();
    QDBusConnection::disconnectFromBus(name_);
}

void PortalSession::sendKey(xkb_keysym_t symbol, bool down) {
    send("NotifyKeyboardKeysym", static_cast<int>(symbol), down);
}

void PortalSession::sendKeyCode(xkb_keycode_t code, bool down) {
    send("NotifyKeyboardKeycode", static_cast<int>(code) - kFirstCode, down);
}

// Desktops take each call on a thread of its own: only an answer says that the next event
// comes behind this one.
void PortalSession::send(const char* method, int key, bool down) {
    finish();
    if (state() != State::kOpen) return;
    const QDBusMessage call = portalCall(method)
                              << QVariant::fromValue(QDBusObjectPath(consent_->session()))
                              << QVariantMap() << key << (down ? 1U : 0U);
    reply_ = bus_.asyncCall(call, kTimeOfReply);
}

// A portal that was restarted knows nothing of the session any more.
void PortalSession::finish() {
    if (!reply_) return;
    reply_->waitForFinished();
    if (reply_->isError()) consent_->lose();
    reply_.reset();
}

}  // namespace kalvo
