#include "platform/windows/keyboard/windows_typing_watch.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <future>
#include <thread>
#include <utility>

#include "platform/clock.h"
#include "platform/windows/keyboard/front_window.h"

namespace kalvo {

namespace {

// Between two windows of an application nobody may be in front for a moment.
constexpr std::uint32_t kFocusGap = 1000;  // milliseconds

constexpr std::size_t kKeys = 256;

// The keys of hands, as the hook's thread sees them. There is one keyboard, and one hook.
struct Keys {
    std::array<std::atomic<bool>, kKeys> down{};
    std::array<std::atomic<bool>, kKeys> heldBefore{};
    std::atomic<bool> pressed{false};
    std::atomic<bool> stopKey{false};

    void moved(std::size_t key, bool nowDown) {
        if (!nowDown) {
            down[key] = heldBefore[key] = false;
        } else if (!heldBefore[key]) {
            down[key] = pressed = true;
            if (key == VK_ESCAPE) stopKey = true;
        }
    }
};

Keys& keys() {
    static Keys instance;
    return instance;
}

LRESULT CALLBACK onKey(int code, WPARAM message, LPARAM details) {
    if (code == HC_ACTION) {
        const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(details);
        if ((key.flags & LLKHF_INJECTED) == 0 && key.vkCode < kKeys)
            keys().moved(key.vkCode, message == WM_KEYDOWN || message == WM_SYSKEYDOWN);
    }
    return CallNextHookEx(nullptr, code, message, details);
}

}  // namespace

// The system calls a hook through the messages of the thread that set it.
class WindowsTypingWatch::Hook {
public:
    Hook() {
        std::promise<DWORD> started;
        auto id = started.get_future();
        thread_ = std::thread([&started] {
            const HHOOK hook =
                SetWindowsHookExW(WH_KEYBOARD_LL, onKey, GetModuleHandleW(nullptr), 0);
            MSG message;
            PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the queue
            started.set_value(GetCurrentThreadId());
            while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
            if (hook != nullptr) UnhookWindowsHookEx(hook);
        });
        id_ = id.get();
    }
    Hook(const Hook&) = delete;
    Hook& operator=(const Hook&) = delete;
    ~Hook() {
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
    }

private:
    std::thread thread_;
    DWORD id_ = 0;
};

WindowsTypingWatch::WindowsTypingWatch(std::function<WatchRules()> rules)
    : rules_(std::move(rules)), hook_(std::make_unique<Hook>()) {}

WindowsTypingWatch::~WindowsTypingWatch() = default;

void WindowsTypingWatch::begin() {
    rule_ = rules_();
    Keys& user = keys();
    for (std::size_t key = 0; key < kKeys; ++key) {
        user.heldBefore[key] = GetAsyncKeyState(static_cast<int>(key)) < 0;
        user.down[key] = false;
    }
    user.pressed = user.stopKey = false;
    target_ = frontWindow();
    process_ = processOf(static_cast<HWND>(target_));
    nobodySince_ = 0;
    hold_ = Hold::kNone;
}

bool WindowsTypingWatch::glance() { return keys().pressed; }

TypingStop WindowsTypingWatch::look() {
    Keys& user = keys();
    const bool pressed = user.pressed.exchange(false);
    const bool down = std::any_of(user.down.begin(), user.down.end(),
                                  [](const std::atomic<bool>& key) { return key.load(); });
    hold_ = pressed || down ? Hold::kUserKey : Hold::kNone;
    if (rule_.stopKey && user.stopKey) return TypingStop::kStopKey;
    if (!rule_.targetGuard) return TypingStop::kNone;
    if (target_ == nullptr) return TypingStop::kNoTarget;
    const HWND front = frontWindow();
    if (front != nullptr && processOf(front) == process_) {
        nobodySince_ = 0;
        return TypingStop::kNone;
    }
    const TypingStop stop = IsWindow(static_cast<HWND>(target_)) != 0
                                ? TypingStop::kOtherApplication
                                : TypingStop::kTargetGone;
    if (front != nullptr) return stop;
    if (nobodySince_ == 0) nobodySince_ = std::max<std::uint32_t>(steadyTicks(), 1);
    if (steadyTicks() - nobodySince_ >= kFocusGap) return stop;
    if (hold_ == Hold::kNone) hold_ = Hold::kFocusMoves;
    return TypingStop::kNone;
}

bool WindowsTypingWatch::targetInFront() {
    return process_ != 0 && processOf(frontWindow()) == process_;
}

}  // namespace kalvo
