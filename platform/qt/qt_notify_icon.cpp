#include "platform/qt/qt_notify_icon.h"

#include <QIcon>
#include <utility>

#include "platform/qt/qt_text.h"

namespace kalvo {

QtNotifyIcon::QtNotifyIcon(const QIcon& picture, std::function<void()> onClick,
                           std::function<void()> onRightClick)
    : icon_(picture) {
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [onClick = std::move(onClick), onRightClick = std::move(onRightClick)](
                         QSystemTrayIcon::ActivationReason reason) {
                         reason == QSystemTrayIcon::Context ? onRightClick() : onClick();
                     });
}

bool QtNotifyIcon::available() { return QSystemTrayIcon::isSystemTrayAvailable(); }

void QtNotifyIcon::add(std::string_view tip) {
    icon_.setToolTip(toQString(tip));
    icon_.show();
}

void QtNotifyIcon::modify(std::string_view tip) {
    if (icon_.isVisible()) icon_.setToolTip(toQString(tip));
}

void QtNotifyIcon::remove() { icon_.hide(); }

void QtNotifyIcon::notify(std::string_view text) {
    icon_.showMessage("KALVO Horizon", toQString(text));
}

}  // namespace kalvo
