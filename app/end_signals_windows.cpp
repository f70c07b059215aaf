#include <windows.h>

#include <mutex>
#include <utility>

#include "app/end_signals.h"

namespace kalvo {

struct EndSignals::Waiting {};

namespace {

// The system calls a plain function, on a thread of its own.
std::mutex mutex;
std::function<void()> endHandler;
bool ended = false;  // before there was a handler

BOOL WINAPI onConsoleEvent(DWORD) {
    const std::lock_guard lock(mutex);
    ended = true;
    if (endHandler) endHandler();
    return TRUE;
}

}  // namespace

// Every event of the console ends the program; closing it leaves a few seconds for
// that. There is none for a transfer.
EndSignals::EndSignals() { SetConsoleCtrlHandler(onConsoleEvent, TRUE); }

EndSignals::~EndSignals() {
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    const std::lock_guard lock(mutex);
    endHandler = nullptr;
}

void EndSignals::start(std::function<void()> onEnd, std::function<void()> /*onTransfer*/) {
    const std::lock_guard lock(mutex);
    endHandler = std::move(onEnd);
    if (ended) endHandler();
}

}  // namespace kalvo
