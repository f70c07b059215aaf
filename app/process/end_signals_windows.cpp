#include <windows.h>

#include <mutex>
#include <utility>

#include "app/process/end_signals.h"

namespace kalvo {

struct EndSignals::Waiting {};

namespace {

// The system calls a plain function, on a thread of its own.
std::mutex mutex;
std::function<void()> endHandler;
std::function<void()> transferHandler;
bool ended = false;  // before there was a handler

BOOL WINAPI onConsoleEvent(DWORD event) {
    const std::lock_guard lock(mutex);
    if (event == CTRL_BREAK_EVENT) {
        if (transferHandler) transferHandler();
        return TRUE;
    }
    ended = true;
    if (endHandler) endHandler();
    return TRUE;
}

}  // namespace

// Ctrl+Break is the transfer; every other event of the console ends the program.
EndSignals::EndSignals() { SetConsoleCtrlHandler(onConsoleEvent, TRUE); }

EndSignals::~EndSignals() {
    stop();
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
}

void EndSignals::start(std::function<void()> onEnd, std::function<void()> onTransfer,
                       std::function<void()>) {
    const std::lock_guard lock(mutex);
    endHandler = std::move(onEnd);
    transferHandler = std::move(onTransfer);
    if (ended) endHandler();
}

void EndSignals::stop() {
    const std::lock_guard lock(mutex);
    endHandler = nullptr;
    transferHandler = nullptr;
}

}  // namespace kalvo
