#include "platform/wayland/portal/portal_consent.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QTimer>
#include <chrono>
#include <utility>

#include "platform/wayland/portal/portal_token.h"

namespace kalvo {

namespace {

const char* const kService = "org.freedesktop.portal.Desktop";
const char* const kPath = "/org/freedesktop/portal/desktop";
const char* const kInterface = "org.freedesktop.portal.RemoteDesktop";
const char* const kRequestInterface = "org.freedesktop.portal.Request";
const char* const kSessionInterface = "org.freedesktop.portal.Session";
constexpr uint kKeyboard = 1;
constexpr uint kUntilRevoked = 2;
constexpr uint kVersionWithTokens = 2;
constexpr int kProbeTime = 3000;  // milliseconds; the portal may have to be started
constexpr std::chrono::seconds kTimeBetweenSessions{2};
// With its first key a desktop changes to the new keyboard.
constexpr std::chrono::milliseconds kFirstKey{300};
constexpr int kShift = 0xFFE1;

}  // namespace

QDBusMessage portalCall(const char* method) {
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
}

unsigned portalProperty(const QDBusConnection& bus, const char* name) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, "org.freedesktop.DBus.Properties", "Get");
    call << QString(kInterface) << QString(name);
    const QDBusReply<QDBusVariant> reply = bus.call(call, QDBus::Block, kProbeTime);
    return reply.isValid() ? reply.value().variant().toUInt() : 0;
}

PortalConsent::PortalConsent(const QDBusConnection& bus) : bus_(bus) {
    bus_.connect("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                 "NameOwnerChanged", {kService}, QString(), this,
                 SLOT(onOwnerChange(QString, QString)));
}

void PortalConsent::ask() {
    if (change(State::kNotAsked, State::kAsking) || change(State::kRefused, State::kAsking) ||
        change(State::kClosed, State::kAsking))
        QMetaObject::invokeMethod(
            this, [this] { begin(Step::kCreate); }, Qt::QueuedConnection);
}

QString PortalConsent::session() const {
    const std::lock_guard lock(mutex_);
    return session_;
}

void PortalConsent::setSession(const QString& session) {
    const std::lock_guard lock(mutex_);
    session_ = session;
}

// Each step is a request with an object of its own, whose name is known beforehand so that
// the answer cannot be missed.
void PortalConsent::begin(Step step) {
    step_ = step;
    const QString token = QString("kalvo%1").arg(++requests_);
    QString sender = bus_.baseService().mid(1);
    sender.replace('.', '_');
    listenTo(QString("%1/request/%2/%3").arg(kPath, sender, token));
    auto* const reply = new QDBusPendingCallWatcher(bus_.asyncCall(callOf(step, token)), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this, reply, request = request_] {
        reply->deleteLater();
        if (reply->isError() && request == request_) end();
    });
}

void PortalConsent::listenTo(const QString& request) {
    const auto* const slot = SLOT(onResponse(uint, QVariantMap, QDBusMessage));
    if (!request_.isEmpty())
        bus_.disconnect(kService, request_, kRequestInterface, "Response", this, slot);
    request_ = request;
    bus_.connect(kService, request_, kRequestInterface, "Response", this, slot);
}

QDBusMessage PortalConsent::callOf(Step step, const QString& token) {
    QVariantMap options{{"handle_token", token}};
    if (step == Step::kCreate) {
        options["session_handle_token"] = token;
        return portalCall("CreateSession") << options;
    }
    const QVariant session = QVariant::fromValue(QDBusObjectPath(this->session()));
    if (step == Step::kStart) return portalCall("Start") << session << QString() << options;
    options["types"] = kKeyboard;
    if (portalProperty(bus_, "version") >= kVersionWithTokens) {
        options["persist_mode"] = kUntilRevoked;
        if (const QString known = readPortalToken(); !known.isEmpty())
            options["restore_token"] = known;
    }
    return portalCall("SelectDevices") << session << options;
}

void PortalConsent::onResponse(uint response, const QVariantMap& results,
                               const QDBusMessage& message) {
    if (state_ != State::kAsking || message.path() != request_) return;
    if (response != 0) {
        refuse();
        return;
    }
    switch (step_) {
        case Step::kCreate: created(results.value("session_handle").toString()); break;
        case Step::kSelect: begin(Step::kStart); break;
        case Step::kStart: started(results); break;
    }
}

void PortalConsent::created(const QString& session) {
    const auto* const slot = SLOT(onClosed(QVariantMap, QDBusMessage));
    const QString before = this->session();
    if (!before.isEmpty())
        bus_.disconnect(kService, before, kSessionInterface, "Closed", this, slot);
    setSession(session);
    bus_.connect(kService, session, kSessionInterface, "Closed", this, slot);
    begin(Step::kSelect);
}

// A token serves once: the answer has the next one.
void PortalConsent::started(const QVariantMap& results) {
    if ((results.value("devices").toUInt() & kKeyboard) == 0) {
        refuse();
        return;
    }
    keepPortalToken(results.value("restore_token").toString());
    for (const uint down : {1U, 0U})
        bus_.send(portalCall("NotifyKeyboardKeysym")
                  << QVariant::fromValue(QDBusObjectPath(session())) << QVariantMap() << kShift
                  << down);
    QTimer::singleShot(kFirstKey, this, [this] { change(State::kAsking, State::kOpen); });
}

void PortalConsent::refuse() {
    change(State::kAsking, State::kRefused);
    close();
}

void PortalConsent::close() {
    if (const QString open = session(); !open.isEmpty())
        bus_.send(QDBusMessage::createMethodCall(kService, open, kSessionInterface, "Close"));
}

void PortalConsent::onClosed(const QVariantMap&, const QDBusMessage& message) {
    if (message.path() == session()) end();
}

// Sessions go with the portal that kept them.
void PortalConsent::onOwnerChange(const QString&, const QString& before) {
    if (!before.isEmpty()) end();
}

void PortalConsent::end() {
    if (change(State::kOpen, State::kClosed) || change(State::kAsking, State::kClosed)) askLater();
}

void PortalConsent::askLater() {
    QTimer::singleShot(kTimeBetweenSessions, this, [this] {
        if (state_ == State::kClosed) ask();
    });
}

// Known at once: whoever sends keys looks right behind the last one.
void PortalConsent::lose() {
    if (!change(State::kOpen, State::kClosed)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            close();
            askLater();
        },
        Qt::QueuedConnection);
}

}  // namespace kalvo
