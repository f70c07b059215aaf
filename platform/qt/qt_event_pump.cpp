#include "platform/qt/qt_event_pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <utility>

namespace kalvo {

void QtEventPump::run() {
    if (!ending_) QCoreApplication::exec();
}

void QtEventPump::requestEnd() {
    ending_ = true;
    // Not quit(), which every open window could refuse.
    QMetaObject::invokeMethod(
        this, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
}

void QtEventPump::deliver(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RuntimeError& error) {
        onError_(error);
    } catch (const ProgramEnd&) {
        // Asked to end: the event loop is about to return.
    }
}

void QtEventPump::DoEvents() {
    auto* const dispatcher = QThread::currentThread()->eventDispatcher();
    const bool delivered = dispatcher->processEvents(QEventLoop::AllEvents);
    if (ending_) throw ProgramEnd{};
    idleCalls_ = delivered ? 0 : idleCalls_ + 1;
    if (idleCalls_ > kIdleCallsBeforeRest) QThread::msleep(1);
}

void QtEventPump::waitForEvents(int milliseconds) {
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(milliseconds);
    QThread::currentThread()->eventDispatcher()->processEvents(QEventLoop::AllEvents |
                                                               QEventLoop::WaitForMoreEvents);
    if (ending_) throw ProgramEnd{};
}

void QtEventPump::Sleep(int milliseconds) {
    idleCalls_ = 0;
    QThread::msleep(static_cast<unsigned long>(milliseconds > 0 ? milliseconds : 0));
}

std::uint32_t QtEventPump::GetTickCount() { return steadyTicks(); }

LocalTime QtEventPump::now() { return localNow(); }

void QtEventPump::post(std::function<void()> handler) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(handler));
    }
    QMetaObject::invokeMethod(
        this, [this] { deliverWaiting(); }, Qt::QueuedConnection);
}

void QtEventPump::deliverWaiting() {
    std::size_t count = 0;
    {
        const std::lock_guard lock(mutex_);
        count = waiting_.size();
    }
    // A handler that posts another does not keep the caller here for ever.
    for (; count > 0 && !drawing_; --count) {
        std::function<void()> handler;
        {
            const std::lock_guard lock(mutex_);
            if (waiting_.empty()) return;
            handler = std::move(waiting_.front());
            waiting_.pop_front();
        }
        deliver(handler);
    }
}

void QtEventPump::draw() {
    drawing_ = true;
    QThread::currentThread()->eventDispatcher()->processEvents(QEventLoop::ExcludeUserInputEvents);
    drawing_ = false;
    // What was held back meanwhile is delivered by the next turn of the event loop.
    QMetaObject::invokeMethod(
        this, [this] { deliverWaiting(); }, Qt::QueuedConnection);
}

}  // namespace kalvo
