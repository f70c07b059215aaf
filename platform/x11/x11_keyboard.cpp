#include "platform/x11/x11_keyboard.h"

#include "platform/shared/confirming_keys.h"

namespace kalvo {

namespace {

// Keys sent after a longer pause than this are typed anew: whether the user
// holds a modifier is asked again.
constexpr std::chrono::milliseconds kTypingPause{200};

// Key maps in a row that may come into force before typing goes on all the same.
constexpr int kMapsInARow = 5;

// How often a program may find Wine's clipboard busy.
constexpr int kPasteAttempts = 5;

// Characters that get keys of their own: all, or those that have no Alt+keypad code.
constexpr unsigned char kLastAscii = 0x7F;
constexpr unsigned char kLastAnsi = 0xFF;

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

// Asked for every key. While others are held nobody changes the layout.
KeyboardLayout& X11Keyboard::foregroundLayout() {
    if (!connection_.holdsOthers()) layout_.follow();
    layout_.text().pass(manner_.method == TypingMethod::kClipboard && !modifierHeld());
    return layout_;
}

void X11Keyboard::prepareFor(std::string_view script) {
    if (!connection_.alive()) return;
    takeManner();
    layout_.follow();
    if (manner_.method != TypingMethod::kClipboard)
        layout_.prepareFor(script,
                           manner_.method == TypingMethod::kKeypad ? kLastAscii : kLastAnsi);
}

void X11Keyboard::takeManner() {
    pace_.lookAtTarget();
    if (mannerOf_) manner_ = mannerOf_(target_.names());
    injector_.setPause(std::chrono::milliseconds(manner_.keyPause));
    pace_.setLead(manner_.lead > 0 ? manner_.lead : TargetPace::kUsualLead);
}

std::string X11Keyboard::takeUntyped() {
    if (clipboard_) clipboard_->putBack();
    return layout_.takeUntyped();
}

void X11Keyboard::passComposed(char character) {
    if (manner_.method == TypingMethod::kClipboard)
        layout_.text().add(character);
    else if (manner_.method == TypingMethod::kKeypad)
        composed_.typeOnKeypad(character);
    else
        composed_.type(character);
}

bool X11Keyboard::awaitTarget(int milliseconds) {
    return !connection_.alive() || pace_.await(std::chrono::milliseconds(milliseconds));
}

void X11Keyboard::passKey(const KeyRecord& record) {
    if (layout_.text().take(record)) return;
    if (PassedText::endedBy(record)) paste();
    records_.press(record);
}

bool X11Keyboard::modifierHeld() const {
    const ModifierKeys& keys = keymap_.modifiers();
    const auto down = [&](const ModifierOfKey& key) {
        return key.keycode <= 255 && injector_.isDown(key.keycode);
    };
    return altKeypad_.holdsAlt() || down(keys.shift) || down(keys.control) || down(keys.alt);
}

// The text gathered so far, with Control+V.
void X11Keyboard::paste() {
    const std::string text = layout_.text().takeRun();
    if (text.empty()) return;
    // From here on others have to answer.
    connection_.flush();
    const auto v = layout_.strokeOf('v');
    pace_.lookAtTarget();
    if (target_.underWine()) pace_.settle();
    if (!v || !clipboard().offer(text)) {
        for (const char character : text) composed_.type(character);
    } else if (target_.underWine()) {
        pasteUnderWine(v->keycode);
    } else {
        pressControl(v->keycode);
        static_cast<void>(clipboard_->awaitFetch(target_.focus()));
    }
}

// Wine's own clipboard has to hear of a text before a program can paste it, and hears of
// nothing while one still pastes. A program that has read Control+V and has not got the
// text has found that clipboard busy.
void X11Keyboard::pasteUnderWine(xkb_keycode_t v) {
    static_cast<void>(clipboard_->awaitNotice(target_.focus()));
    for (int i = 0; i < kPasteAttempts; ++i) {
        pressControl(v);
        if (clipboard_->awaitFetch(target_.focus()) || !pace_.settle() ||
            clipboard_->awaitFetch(target_.focus()))
            return;
    }
}

void X11Keyboard::pressControl(xkb_keycode_t key) {
    const xkb_keycode_t control = keymap_.modifiers().control.keycode;
    injector_.press(control);
    injector_.tap(key);
    injector_.release(control);
    connection_.flush();
}

ClipboardPaste& X11Keyboard::clipboard() {
    if (!clipboard_) clipboard_ = std::make_unique<ClipboardPaste>(connection_.displayName());
    return *clipboard_;
}

std::optional<std::string> X11Keyboard::clipboardText() {
    connection_.flush();
    return clipboard().text();
}

void X11Keyboard::finishInput() {
    paste();
    connection_.sync();
}

void X11Keyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty() || !connection_.alive()) return;
    startTyping();
    userModifiers_.lift();
    records_.feed(records, altKeypad_);
    userModifiers_.putBack();
    if (confirms(records.back())) injector_.rest(std::chrono::milliseconds(manner_.confirmPause));
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
