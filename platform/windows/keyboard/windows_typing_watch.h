// What happens in a Windows session while the program types into one of its applications.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/typing_watch.h"

namespace kalvo {

// Sees the keys of hands through a keyboard hook on a thread of its own, and asks which
// process is in front. Windows of one process are one application.
class WindowsTypingWatch : public TypingWatch {
public:
    // `rules` is asked whenever typing begins.
    explicit WindowsTypingWatch(std::function<WatchRules()> rules);
    ~WindowsTypingWatch() override;
    WindowsTypingWatch(const WindowsTypingWatch&) = delete;
    WindowsTypingWatch& operator=(const WindowsTypingWatch&) = delete;

    void begin() override;
    [[nodiscard]] bool glance() override;
    [[nodiscard]] TypingStop look() override;
    [[nodiscard]] Hold hold() override { return hold_; }
    [[nodiscard]] bool targetInFront() override;

private:
    class Hook;

    std::function<WatchRules()> rules_;
    std::unique_ptr<Hook> hook_;
    WatchRules rule_;
    void* target_ = nullptr;  // HWND
    unsigned long process_ = 0;
    std::uint32_t nobodySince_ = 0;
    Hold hold_ = Hold::kNone;
};

}  // namespace kalvo
