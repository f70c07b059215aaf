// The user's leave to type, as the desktop's RemoteDesktop portal asks for it.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace kalvo {

// A call of the portal's RemoteDesktop interface.
[[nodiscard]] QDBusMessage portalCall(const char* method);
// A number that the portal tells of itself; 0 for what it does not have.
[[nodiscard]] unsigned portalProperty(const QDBusConnection& bus, const char* name);

// Works in the event loop of a thread of its own, so that the dialogue goes on whatever the
// program does meanwhile. Where the portal gives a token, the user is not asked again in the
// next session. A session that the desktop has ended is asked for anew after a moment; who
// was refused waits until ask() is called.
class PortalConsent : public QObject {
    Q_OBJECT
public:
    enum class State : std::uint8_t { kNotAsked, kAsking, kOpen, kRefused, kClosed };

    explicit PortalConsent(const QDBusConnection& bus);

    // These may be called from any thread.
    //
    // Asks for leave, unless there is one or the answer is still to come; returns at once.
    void ask();
    [[nodiscard]] State state() const { return state_; }
    // The name of the open session.
    [[nodiscard]] QString session() const;
    // The portal knows the open session no more.
    void lose();

private:
    Q_SLOT void onResponse(uint response, const QVariantMap& results, const QDBusMessage& message);
    Q_SLOT void onClosed(const QVariantMap& details, const QDBusMessage& message);
    Q_SLOT void onOwnerChange(const QString& name, const QString& before);

    enum class Step : std::uint8_t { kCreate, kSelect, kStart };

    // False when the state was another one.
    bool change(State from, State to) { return state_.compare_exchange_strong(from, to); }
    void begin(Step step);
    [[nodiscard]] QDBusMessage callOf(Step step, const QString& token);
    void listenTo(const QString& request);
    void created(const QString& session);
    void started(const QVariantMap& results);
    void setSession(const QString& session);
    void refuse();
    void close();
    void end();
    void askLater();

    QDBusConnection bus_;
    std::atomic<State> state_ = State::kNotAsked;
    Step step_ = Step::kCreate;
    int requests_ = 0;
    QString request_;
    mutable std::mutex mutex_;
    QString session_;  // guarded by mutex_
};

}  // namespace kalvo
