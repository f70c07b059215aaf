#include "app/reconnecting_keyboard.h"

#include <span>
#include <string>
#include <utility>

#include "app/bindings/absent_devices.h"
#include "platform/clock.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kTimeBetweenTries = 2000;  // milliseconds

}  // namespace

ReconnectingKeyboard::ReconnectingKeyboard(Connect connect)
    : connect_(std::move(connect)), keyboard_(std::make_unique<NoKeyboard>()) {
    tryToConnect();
}

bool ReconnectingKeyboard::connected() {
    if (keyboard_->connected()) return true;
    if (keyboard_->reconnects()) return false;
    if (steadyTicks() - lastTry_ >= kTimeBetweenTries) tryToConnect();
    return keyboard_->connected();
}

// Whoever asks for a manner names the application.
void ReconnectingKeyboard::useManners(const MannerOf& mannerOf) {
    mannerOf_ = [this, mannerOf](std::span<const std::string> names) {
        target_ = names.empty() ? std::string() : names.front();
        return mannerOf(names);
    };
    keyboard_->useManners(mannerOf_);
}

void ReconnectingKeyboard::tryToConnect() {
    lastTry_ = steadyTicks();
    resumeNext([this] {
        keyboard_ = connect_();
        keyboard_->useManners(mannerOf_);
        if (leaveAsked_) keyboard_->requestLeave();
    });
}

}  // namespace kalvo
