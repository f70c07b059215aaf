// The icon in the notification area.
#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>
#include <QSystemTrayIcon>
#include <array>
#include <functional>

#include "platform/notify_icon.h"

namespace kalvo {

class QtNotifyIcon : public NotifyIcon {
public:
    // `signs` are put into the corner of the picture for the states behind kReady, in their
    // order. `onRightClick` is called for a click with the right button, `onClick` for any other.
    QtNotifyIcon(const QIcon& picture, const std::array<QIcon, 3>& signs,
                 std::function<void()> onClick, std::function<void()> onRightClick);
    QtNotifyIcon(const QtNotifyIcon&) = delete;
    QtNotifyIcon& operator=(const QtNotifyIcon&) = delete;

    // Whether this desktop has a notification area at all.
    [[nodiscard]] static bool available();

    // A second line of every tip, for a user with several icons.
    void setSite(const QString& site) { site_ = site; }

    void add(std::string_view tip) override;
    void modify(std::string_view tip) override;
    void remove() override;

    void notify(std::string_view text, LogLevel level) override;

    void setState(IconState state);

    // Lets a notification area that draws menus itself show this one at the icon; one that does
    // not still reports the click.
    void setMenu(QMenu* menu) { icon_.setContextMenu(menu); }

private:
    [[nodiscard]] QString fullTip(std::string_view tip) const;

    QString site_;
    std::array<QIcon, 4> pictures_;
    IconState state_ = IconState::kReady;
    QSystemTrayIcon icon_;
    QStringList pending_;  // notices from before there was an icon
};

}  // namespace kalvo
