// The icon in the notification area.
#pragma once

#include <QIcon>
#include <QStringList>
#include <QSystemTrayIcon>
#include <array>
#include <functional>

#include "platform/notify_icon.h"

namespace kalvo {

class QtNotifyIcon : public NotifyIcon {
public:
    // `signs` are put into the corner of the picture for the states behind kReady, in their
    // order. `onMouse` is called for every click on the icon, whichever button.
    QtNotifyIcon(const QIcon& picture, const std::array<QIcon, 3>& signs,
                 std::function<void()> onMouse);
    QtNotifyIcon(const QtNotifyIcon&) = delete;
    QtNotifyIcon& operator=(const QtNotifyIcon&) = delete;

    // Whether this desktop has a notification area at all.
    [[nodiscard]] static bool available();

    void add(std::string_view tip) override;
    void modify(std::string_view tip) override;
    void remove() override;

    void notify(std::string_view text) override;

    void setState(IconState state);

private:
    std::array<QIcon, 4> pictures_;
    IconState state_ = IconState::kReady;
    QSystemTrayIcon icon_;
    QStringList pending_;  // notices from before there was an icon
};

}  // namespace kalvo
