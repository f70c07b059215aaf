// The event loop of the desktop program: the toolkit's own, on one thread.
#pragma once

#include <QEventLoop>
#include <QObject>

#include "platform/shared/queued_event_pump.h"

namespace kalvo {

// Whatever a window does goes through deliver(): nothing may be thrown into the toolkit.
class QtEventPump : public QObject, public QueuedEventPump {
public:
    using QueuedEventPump::QueuedEventPump;

    // Delivers events until the program is asked to end.
    void run();

    // Lets the toolkit draw what has changed. Nothing of the program's own is delivered,
    // nor any input of the user: a caller may be in the middle of something.
    void draw();

    void DoEvents() override;
    void waitForEvents(int milliseconds) override;
    void answerUser() override;

private:
    void wake() override;

    void processOnly(QEventLoop::ProcessEventsFlags events);

    bool postedWait_ = false;
};

}  // namespace kalvo
