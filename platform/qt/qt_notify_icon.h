// The icon in the notification area.
#pragma once

#include <QSystemTrayIcon>
#include <functional>

#include "platform/notify_icon.h"

namespace kalvo {

class QtNotifyIcon : public NotifyIcon {
public:
    // `onRightClick` is called for a click with the right button, `onClick` for any other.
    QtNotifyIcon(const QIcon& picture, std::function<void()> onClick,
                 std::function<void()> onRightClick);
    QtNotifyIcon(const QtNotifyIcon&) = delete;
    QtNotifyIcon& operator=(const QtNotifyIcon&) = delete;

    // Whether this desktop has a notification area at all.
    [[nodiscard]] static bool available();

    void add(std::string_view tip) override;
    void modify(std::string_view tip) override;
    void remove() override;

    void notify(std::string_view text) override;

private:
    QSystemTrayIcon icon_;
};

}  // namespace kalvo
