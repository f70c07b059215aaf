#include "platform/qt/qt_event_pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <utility>

namespace kalvo {

void QtEventPump::run() {
    if (!ending()) QCoreApplication::exec();
}

void QtEventPump::DoEvents() {
    auto* const dispatcher = QThread::currentThread()->eventDispatcher();
    const bool delivered = dispatcher->processEvents(QEventLoop::AllEvents);
    if (ending()) throw ProgramEnd{};
    if (restIsDue(delivered)) QThread::msleep(1);
}

void QtEventPump::waitForEvents(int milliseconds) {
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(milliseconds);
    QThread::currentThread()->eventDispatcher()->processEvents(QEventLoop::AllEvents |
                                                               QEventLoop::WaitForMoreEvents);
    if (ending()) throw ProgramEnd{};
}

void QtEventPump::wake() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            // Not quit(), which every open window could refuse.
            if (ending()) QCoreApplication::exit();
            if (!postedWait_) deliverWaiting();
        },
        Qt::QueuedConnection);
}

void QtEventPump::draw() { processOnly(QEventLoop::ExcludeUserInputEvents); }

void QtEventPump::answerUser() { processOnly(QEventLoop::AllEvents); }

void QtEventPump::processOnly(QEventLoop::ProcessEventsFlags events) {
    const bool before = std::exchange(postedWait_, true);
    QThread::currentThread()->eventDispatcher()->processEvents(events);
    postedWait_ = before;
    // What was held back meanwhile is delivered by the next turn of the event loop.
    if (!before) wake();
}

}  // namespace kalvo
