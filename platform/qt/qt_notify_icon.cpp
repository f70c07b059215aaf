#include "platform/qt/qt_notify_icon.h"

#include <QPainter>
#include <QPixmap>
#include <cstddef>
#include <utility>

#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

// The picture with a sign in its lower right corner, large enough for the smallest size.
QIcon withSign(const QIcon& picture, const QIcon& sign) {
    QIcon both;
    for (const QSize size : picture.availableSizes()) {
        QPixmap pixmap = picture.pixmap(size, 1.0);
        const QSize part = pixmap.size() * 5 / 8;
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(
            QRect(pixmap.rect().bottomRight() - QPoint(part.width(), part.height()) + QPoint(1, 1),
                  part),
            sign.pixmap(sign.availableSizes().value(0), 1.0));
        painter.end();
        both.addPixmap(pixmap);
    }
    return both;
}

}  // namespace

QtNotifyIcon::QtNotifyIcon(const QIcon& picture, const std::array<QIcon, 3>& signs,
                           std::function<void()> onClick, std::function<void()> onRightClick)
    : pictures_{picture, withSign(picture, signs[0]), withSign(picture, signs[1]),
                withSign(picture, signs[2])},
      icon_(picture) {
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [onClick = std::move(onClick), onRightClick = std::move(onRightClick)](
                         QSystemTrayIcon::ActivationReason reason) {
                         reason == QSystemTrayIcon::Context ? onRightClick() : onClick();
                     });
}

bool QtNotifyIcon::available() { return QSystemTrayIcon::isSystemTrayAvailable(); }

QString QtNotifyIcon::fullTip(std::string_view tip) const {
    const QString text = toQString(tip).trimmed();
    return site_.isEmpty() ? text : text + "\n" + site_;
}

void QtNotifyIcon::add(std::string_view tip) {
    icon_.setToolTip(fullTip(tip));
    icon_.show();
    for (const QString& text : std::exchange(pending_, {}))
        icon_.showMessage("KALVO Horizon", text);
}

void QtNotifyIcon::modify(std::string_view tip) {
    if (icon_.isVisible()) icon_.setToolTip(fullTip(tip));
}

void QtNotifyIcon::remove() { icon_.hide(); }

void QtNotifyIcon::notify(std::string_view text, LogLevel) {
    if (icon_.isVisible())
        icon_.showMessage("KALVO Horizon", toQString(text));
    else
        pending_ << toQString(text);
}

void QtNotifyIcon::setState(IconState state) {
    if (state == std::exchange(state_, state)) return;
    icon_.setIcon(pictures_.at(static_cast<std::size_t>(state)));
}

}  // namespace kalvo
