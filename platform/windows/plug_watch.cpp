#include "platform/windows/plug_watch.h"

#include <windows.h>
// Behind windows.h, which it needs.
#include <dbt.h>

#include <future>
#include <thread>
#include <utility>

namespace kalvo {

namespace {

// Serial ports as devices announce them.
constexpr GUID kPortInterface = {
    0x86e0d1e0, 0x8089, 0x11d0, {0x9c, 0xe4, 0x08, 0x00, 0x3e, 0x30, 0x1f, 0x73}};
constexpr const char* kWindowClass = "KalvoHorizonPlugWatch";

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM value) {
    if (message == WM_DEVICECHANGE &&
        (word == DBT_DEVICEARRIVAL || word == DBT_DEVICEREMOVECOMPLETE))
        (*reinterpret_cast<std::function<void()>*>(GetWindowLongPtrA(window, GWLP_USERDATA)))();
    return DefWindowProcA(window, message, word, value);
}

HWND createListener(std::function<void()>& onChange) {
    WNDCLASSA description{};
    description.lpfnWndProc = windowProcedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.lpszClassName = kWindowClass;
    RegisterClassA(&description);
    const HWND window = CreateWindowExA(0, kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        description.hInstance, nullptr);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&onChange));
    DEV_BROADCAST_DEVICEINTERFACE_A wanted{};
    wanted.dbcc_size = sizeof(wanted);
    wanted.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
    wanted.dbcc_classguid = kPortInterface;
    RegisterDeviceNotificationA(window, &wanted, DEVICE_NOTIFY_WINDOW_HANDLE);
    return window;
}

// Notifications go to a window, which lives in a thread of its own.
class Watch {
public:
    explicit Watch(std::function<void()> onChange)
        : onChange_(std::move(onChange)), thread_([this] { run(); }) {
        threadId_ = ready_.get_future().get();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() {
        PostThreadMessageA(threadId_, WM_QUIT, 0, 0);
        thread_.join();
    }

private:
    void run() {
        const HWND window = createListener(onChange_);
        ready_.set_value(GetCurrentThreadId());
        MSG message{};
        while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
        DestroyWindow(window);
    }

    std::function<void()> onChange_;
    std::promise<DWORD> ready_;
    DWORD threadId_ = 0;
    std::thread thread_;
};

}  // namespace

std::shared_ptr<void> watchPlugging(std::function<void()> onChange) {
    return std::make_shared<Watch>(std::move(onChange));
}

}  // namespace kalvo
