#include "platform/windows/keyboard/clipboard_paste.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <utility>

#include "platform/windows/keyboard/front_window.h"
#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr int kTries = 50;
constexpr DWORD kTimeBetweenTries = 10;  // milliseconds

constexpr UINT kTake = WM_APP;
constexpr UINT kGiveBack = WM_APP + 1;

// The clipboard, as soon as whoever has it open lets go.
class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) {
        for (int tries = 0; !open_ && tries < kTries; ++tries) {
            if (tries > 0) Sleep(kTimeBetweenTries);
            open_ = OpenClipboard(owner) != 0;
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() {
        if (open_) CloseClipboard();
    }
    explicit operator bool() const { return open_; }

private:
    bool open_ = false;
};

// A copy for the clipboard, which owns it from then on.
void setText(const std::wstring& text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (memory == nullptr) return;
    if (auto* const room = static_cast<wchar_t*>(GlobalLock(memory)); room != nullptr) {
        std::copy_n(text.c_str(), text.size() + 1, room);
        GlobalUnlock(memory);
    }
    if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr) GlobalFree(memory);
}

// The history of the clipboard and its copies on other machines leave it alone then.
void keepFromHistory() {
    const UINT format = RegisterClipboardFormatW(L"ExcludeClipboardContentFromMonitorProcessing");
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DWORD));
    if (memory != nullptr && SetClipboardData(format, memory) == nullptr) GlobalFree(memory);
}

}  // namespace

ClipboardPaste::ClipboardPaste() {
    std::promise<HWND> window;
    auto made = window.get_future();
    thread_ = std::thread([this, &window] { run([&](HWND own) { window.set_value(own); }); });
    window_ = made.get();
}

ClipboardPaste::~ClipboardPaste() {
    putBack();
    PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
}

void ClipboardPaste::run(std::function<void(HWND)> ready) {
    const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(handle));
    ready(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

LRESULT CALLBACK ClipboardPaste::handle(HWND window, UINT message, WPARAM w, LPARAM l) {
    auto& self = *reinterpret_cast<ClipboardPaste*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case kTake: return self.take() ? 1 : 0;
        case kGiveBack: self.giveBack(); return 0;
        case WM_RENDERFORMAT:
            if (w == CF_UNICODETEXT) self.render();
            return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, message, w, l);
    }
}

bool ClipboardPaste::offer(std::string_view text) {
    {
        const std::lock_guard lock(mutex_);
        offered_ = wideFromAnsi(text);
        fetchedBy_.reset();
    }
    return SendMessageW(window_, kTake, 0, 0) != 0;
}

bool ClipboardPaste::awaitFetch(DWORD process) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] {
        return fetchedBy_ && (*fetchedBy_ == process || *fetchedBy_ == 0);
    });
}

void ClipboardPaste::putBack() { SendMessageW(window_, kGiveBack, 0, 0); }

bool ClipboardPaste::take() {
    const OpenedClipboard clipboard(window_);
    if (!clipboard) return false;
    if (!std::exchange(lent_, true)) readFormer();
    if (EmptyClipboard() == 0) return false;
    // Without the data: who wants them asks, which tells that they have been fetched.
    SetClipboardData(CF_UNICODETEXT, nullptr);
    keepFromHistory();
    return true;
}

void ClipboardPaste::giveBack() {
    if (!std::exchange(lent_, false) || GetClipboardOwner() != window_) return;
    const OpenedClipboard clipboard(window_);
    if (!clipboard || EmptyClipboard() == 0) return;
    if (former_) setText(*former_);
}

void ClipboardPaste::readFormer() {
    former_.reset();
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    if (data == nullptr) return;
    if (const auto* text = static_cast<const wchar_t*>(GlobalLock(data)); text != nullptr) {
        former_ = text;
        GlobalUnlock(data);
    }
}

void ClipboardPaste::render() {
    const DWORD asking = processOf(GetOpenClipboardWindow());
    const std::lock_guard lock(mutex_);
    setText(offered_);
    fetchedBy_ = asking;
    changed_.notify_all();
}

}  // namespace kalvo
