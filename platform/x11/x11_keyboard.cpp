#include "platform/x11/x11_keyboard.h"

namespace kalvo {

namespace {

// Keys sent after a longer pause than this are typed anew: whether the user
// holds a modifier is asked again.
constexpr std::chrono::milliseconds kTypingPause{200};

// Key maps in a row that may come into force before typing goes on all the same.
constexpr int kMapsInARow = 5;

}  // namespace

X11Keyboard::X11Keyboard(const char* display) : connection_(display), keymap_(connection_) {}

X11Keyboard::~X11Keyboard() { releaseAll(); }

void X11Keyboard::releaseAll() {
    altKeypad_.drop();
    injector_.releaseAll();
    // What a connection that is closed right away has not delivered may be lost.
    connection_.sync();
}

void X11Keyboard::startTyping() {
    const Clock::time_point now = Clock::now();
    if (now - lastTyping_ > kTypingPause && injector_.down().none()) userModifiers_.detect();
    lastTyping_ = now;
}

// Fetching a map lets others go on, who may change it once more.
bool X11Keyboard::holdLayout() {
    const xcb_window_t focus = connection_.focusAtSync();
    for (int i = 0; i < kMapsInARow && !connection_.holdsOthers(); ++i) {
        connection_.holdOthers();
        layout_.follow();
    }
    if (connection_.focusAtSync() == focus) return true;
    connection_.flush();
    return false;
}

KeyboardLayout& X11Keyboard::foregroundLayout() {
    layout_.follow();
    return layout_;
}

void X11Keyboard::prepareFor(std::string_view script) {
    if (!connection_.alive()) return;
    layout_.follow();
    layout_.prepareFor(script);
}

bool X11Keyboard::awaitTarget(int milliseconds) {
    return !connection_.alive() || pace_.await(std::chrono::milliseconds(milliseconds));
}

void X11Keyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty() || !connection_.alive()) return;
    startTyping();
    userModifiers_.lift();
    records_.feed(records, altKeypad_);
    userModifiers_.putBack();
}

void X11Keyboard::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) {
    const KeyRecord record{.virtualKey = virtualKey, .scanCode = scanCode, .flags = flags};
    SendInput({&record, 1});
    connection_.flush();
}

std::int16_t X11Keyboard::GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255 || !connection_.alive()) return 0;
    layout_.follow();
    startTyping();
    return locks_.keyState(static_cast<std::uint8_t>(virtualKey));
}

}  // namespace kalvo
