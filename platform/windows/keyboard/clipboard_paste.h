// Text by way of the clipboard.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace kalvo {

// Offers texts on the clipboard, one after another, and afterwards what was there before, as
// far as that was text. A window on a thread of its own answers whoever asks.
class ClipboardPaste {
public:
    ClipboardPaste();
    ~ClipboardPaste();
    ClipboardPaste(const ClipboardPaste&) = delete;
    ClipboardPaste& operator=(const ClipboardPaste&) = delete;

    // Puts a text (code page 1252) on the clipboard. False when the session refuses.
    bool offer(std::string_view text);
    // Waits, for a second at most, until a process has got it. One that does not say who it
    // is counts as the one.
    bool awaitFetch(DWORD process);
    // Puts the former text back, unless somebody has copied something since.
    void putBack();

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM w, LPARAM l);

    void run(std::function<void(HWND)> ready);
    [[nodiscard]] bool take();
    void giveBack();
    void readFormer();
    void render();

    HWND window_ = nullptr;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::wstring offered_;
    std::optional<std::wstring> former_;
    std::optional<DWORD> fetchedBy_;
    bool lent_ = false;  // the clipboard holds a text of a script
    std::thread thread_;
};

}  // namespace kalvo
