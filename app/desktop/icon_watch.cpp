#include "app/desktop/icon_watch.h"

namespace kalvo {

namespace {

// Milliseconds between two looks for the notification area: as long as it is there, and else.
constexpr int kBetweenLooks = 3000;
constexpr int kWithoutArea = 1000;
// A session that starts us may be about to start its notification area.
constexpr int kLooksBeforeWindow = 3;

}  // namespace

IconWatch::IconWatch(QtNotifyIcon& icon, MenuWindow& menu, SerialPort& port, RunJournal& journal)
    : icon_(icon), menu_(menu), port_(port), journal_(journal) {
    timer_.setTimerType(Qt::VeryCoarseTimer);
    timer_.setInterval(kBetweenLooks);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
}

void IconWatch::begin() {
    countWaiting();
    timer_.start();
}

void IconWatch::lineLost(bool lost) {
    condition_.lineLost = lost;
    show();
}

void IconWatch::typing(bool on) {
    condition_.typing = on;
    countWaiting();
}

void IconWatch::countWaiting() {
    const std::uint64_t changes = journal_.batches().changes();
    // While a batch is typed its progress is all that changes.
    if (!condition_.typing && changes != counted_) {
        counted_ = changes;
        condition_.waiting = journal_.waiting();
    }
    show();
}

void IconWatch::look() {
    looksWithoutArea_ = QtNotifyIcon::available() ? 0 : looksWithoutArea_ + 1;
    const int interval = looksWithoutArea_ == 0 ? kBetweenLooks : kWithoutArea;
    if (timer_.interval() != interval) timer_.setInterval(interval);
    if (looksWithoutArea_ == 0)
        menu_.leave();
    else if (looksWithoutArea_ == kLooksBeforeWindow)
        menu_.stay(
            "Ce bureau n'a pas de zone de notification : cette fenêtre "
            "remplace l'icône de KALVO Horizon.");
    countWaiting();
}

void IconWatch::show() {
    condition_.portOpen = port_.PortOpen();
    if (!condition_.portOpen) condition_.lineLost = false;
    icon_.setState(iconStateOf(condition_));
}

}  // namespace kalvo
