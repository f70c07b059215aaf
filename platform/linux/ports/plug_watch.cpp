#include "platform/linux/ports/plug_watch.h"

#include <libudev.h>
#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <thread>
#include <utility>

#include "platform/shared/file_descriptor.h"

namespace kalvo {

namespace {

struct Unreference {
    void operator()(udev* context) const { udev_unref(context); }
    void operator()(udev_monitor* monitor) const { udev_monitor_unref(monitor); }
    void operator()(udev_device* device) const { udev_device_unref(device); }
};
template <typename Object>
using Udev = std::unique_ptr<Object, Unreference>;

Udev<udev_monitor> monitorTerminals(udev* context) {
    if (context == nullptr) return nullptr;
    Udev<udev_monitor> monitor(udev_monitor_new_from_netlink(context, "udev"));
    const bool ready =
        monitor &&
        udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "tty", nullptr) >= 0 &&
        udev_monitor_enable_receiving(monitor.get()) >= 0;
    return ready ? std::move(monitor) : nullptr;
}

// Sleeps until something happens: no wake-ups while nothing does.
class Watch {
public:
    Watch(Udev<udev> context, Udev<udev_monitor> monitor, std::function<void()> onChange)
        : context_(std::move(context)),
          monitor_(std::move(monitor)),
          onChange_(std::move(onChange)),
          thread_([this] { run(); }) {}
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() {
        (void)eventfd_write(stop_.number(), 1);
        thread_.join();
    }

private:
    void run() {
        std::array<pollfd, 2> waiting{pollfd{udev_monitor_get_fd(monitor_.get()), POLLIN, 0},
                                      pollfd{stop_.number(), POLLIN, 0}};
        for (;;) {
            poll(waiting.data(), waiting.size(), -1);
            if (waiting[1].revents != 0 || (waiting[0].revents & ~POLLIN) != 0) return;
            const Udev<udev_device> device(udev_monitor_receive_device(monitor_.get()));
            if (device) onChange_();
        }
    }

    Udev<udev> context_;
    Udev<udev_monitor> monitor_;
    std::function<void()> onChange_;
    FileDescriptor stop_{eventfd(0, EFD_CLOEXEC)};
    std::thread thread_;
};

}  // namespace

std::shared_ptr<void> watchPlugging(std::function<void()> onChange) {
    Udev<udev> context(udev_new());
    Udev<udev_monitor> monitor = monitorTerminals(context.get());
    if (!monitor) return nullptr;
    return std::make_shared<Watch>(std::move(context), std::move(monitor), std::move(onChange));
}

}  // namespace kalvo
