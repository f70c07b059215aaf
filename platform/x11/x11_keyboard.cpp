#include "platform/x11/x11_keyboard.h"

#include <string>

#include "platform/x11/named_keys.h"
#include "platform/x11/xcb_xkb.h"
#include "text/ansi_text.h"
#include "text/oem_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

// Keys sent after a longer pause than this are typed anew: whether the user
// holds a modifier is asked again.
constexpr std::chrono::milliseconds kTypingPause{200};

constexpr std::uint16_t kAltGr = kNeedsControl | kNeedsAlt;
constexpr std::uint16_t kNoKey = 0xFFFF;
constexpr std::int16_t kHeld = -0x8000;

std::uint8_t lowByte(std::uint16_t virtualKey) { return virtualKey & 0xFFU; }

bool isUp(std::uint32_t flags) { return (flags & kKeyEventKeyUp) != 0; }

bool isControlOrAlt(std::uint16_t virtualKey) {
    return virtualKey == kVkControl || virtualKey == kVkMenu;
}

}  // namespace

X11Keyboard::X11Keyboard(const char* display) : connection_(display), keymap_(connection_) {}

X11Keyboard::~X11Keyboard() { releaseAll(); }

void X11Keyboard::releaseAll() {
    altKeypad_.drop();
    injector_.releaseAll();
    connection_.flush();
}

void X11Keyboard::followKeymap() {
    if (!keymap_.update()) return;
    spares_.keymapChanged();
    namedKeycodes_.fill(0);
}

void X11Keyboard::startTyping() {
    const Clock::time_point now = Clock::now();
    if (now - lastTyping_ > kTypingPause && injector_.down().none()) userModifiers_.detect();
    lastTyping_ = now;
}

KeyboardLayout& X11Keyboard::foregroundLayout() {
    followKeymap();
    return *this;
}

std::int16_t X11Keyboard::VkKeyScanExA(char character) {
    const std::int16_t own = keymap_.layout().VkKeyScanExA(character);
    if (own != -1) return own;
    const auto stroke = spares_.strokeFor(xkb_utf32_to_keysym(ansiToUnicode(character)));
    if (!stroke) return -1;
    return static_cast<std::int16_t>(spares_.virtualKeyOf(stroke->keycode) | stroke->shiftState);
}

std::uint16_t X11Keyboard::MapVirtualKeyExA(std::uint16_t virtualKey) {
    if (const auto spare = spares_.keycodeOf(virtualKey))
        return static_cast<std::uint16_t>(*spare - kScanToKeycode);
    return keymap_.layout().MapVirtualKeyExA(virtualKey);
}

std::uint16_t X11Keyboard::MapVirtualKeyA(std::uint16_t virtualKey) {
    followKeymap();
    return MapVirtualKeyExA(virtualKey);
}

void X11Keyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty() || !connection_.alive()) return;
    startTyping();
    userModifiers_.lift();
    feedBatch(records);
    userModifiers_.putBack();
}

// The key's own record tells what the modifiers before it are for.
void X11Keyboard::feedBatch(std::span<const KeyRecord> records) {
    const std::uint16_t key = records.back().virtualKey;
    if (key == kNoKey) return;
    const bool altGr = (key & kAltGr) == kAltGr;
    for (const KeyRecord& record : records) {
        if (!altGr || !isControlOrAlt(record.virtualKey))
            altKeypad_.feed(record);
        else if (record.virtualKey == kVkMenu)
            injectKey(keymap_.modifiers().level3.keycode, isUp(record.flags), true);
    }
}

void X11Keyboard::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode, std::uint32_t flags) {
    const KeyRecord record{.virtualKey = virtualKey, .scanCode = scanCode, .flags = flags};
    SendInput({&record, 1});
    finishInput();
}

void X11Keyboard::passKey(const KeyRecord& record) {
    injectKey(keycodeOf(record), isUp(record.flags), isModifierKey(lowByte(record.virtualKey)));
}

// Releases of keys that are not down are left out: they might be the user's.
void X11Keyboard::injectKey(xkb_keycode_t key, bool up, bool modifier) {
    if (key == 0 || key > 255) return;
    if (key == keymap_.modifiers().capsLock.keycode) capsLockTyped_ = true;
    if (!up) {
        if (!modifier || !injector_.isDown(key)) injector_.press(key);
    } else if (injector_.isDown(key)) {
        injector_.release(key);
    }
}

xkb_keycode_t X11Keyboard::keycodeOf(const KeyRecord& record) {
    const std::uint8_t virtualKey = lowByte(record.virtualKey);
    if (const xkb_keycode_t named = namedKeycode(virtualKey); named != 0) return named;
    // A named key that the keyboard lacks, such as F20.
    if (const auto spare = spares_.strokeFor(symbolOfNamedKey(virtualKey))) return spare->keycode;
    const std::uint16_t scanCode =
        (record.flags & kKeyEventScanCode) != 0 ? record.scanCode : MapVirtualKeyExA(virtualKey);
    return scanCode == 0 ? 0 : scanCode + kScanToKeycode;
}

xkb_keycode_t X11Keyboard::namedKeycode(std::uint8_t virtualKey) {
    const xkb_keysym_t symbol = symbolOfNamedKey(virtualKey);
    if (symbol == XKB_KEY_NoSymbol) return 0;
    xkb_keycode_t& known = namedKeycodes_[virtualKey];
    if (known == 0) known = keymap_.keyWithSymbol(symbol).value_or(0);
    return known;
}

std::optional<KeyStroke> X11Keyboard::strokeOf(char character) {
    const std::int16_t own = keymap_.layout().VkKeyScanExA(character);
    if (own == -1) return spares_.strokeFor(xkb_utf32_to_keysym(ansiToUnicode(character)));
    const auto answer = static_cast<std::uint16_t>(own);
    const std::uint8_t virtualKey = lowByte(answer);
    // Characters on Control with a key are no text.
    const auto shiftState = static_cast<std::uint16_t>(answer & ~0xFFU);
    if ((shiftState & kAltGr) == kNeedsControl) return std::nullopt;
    const xkb_keycode_t key = keycodeOf({.virtualKey = virtualKey, .scanCode = 0, .flags = 0});
    if (key == 0) return std::nullopt;
    return KeyStroke{key, shiftState};
}

void X11Keyboard::passComposed(char character) {
    followKeymap();
    const auto stroke = strokeOf(character);
    if (!stroke) return;
    const bool capsLock = capsLockOn();
    const xkb_keycode_t capsLockKey = keymap_.modifiers().capsLock.keycode;
    if (capsLock) injector_.tap(capsLockKey);
    tapStroke(*stroke);
    if (capsLock) injector_.tap(capsLockKey);
}

// With exactly the modifiers it needs; those a script holds are lifted meanwhile.
void X11Keyboard::tapStroke(KeyStroke stroke) {
    const ModifierKeys& keys = keymap_.modifiers();
    const std::array<std::pair<xkb_keycode_t, bool>, 4> wanted = {
        {{keys.shift.keycode, (stroke.shiftState & kNeedsShift) != 0},
         {keys.level3.keycode, (stroke.shiftState & kAltGr) == kAltGr},
         {keys.control.keycode, false},
         {keys.alt.keycode, false}}};
    std::array<bool, 4> before{};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto [key, down] = wanted[i];
        if (key > 255) continue;
        before[i] = injector_.isDown(key);
        if (before[i] != down) injectKey(key, !down, true);
    }
    injector_.tap(stroke.keycode);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (wanted[i].first <= 255 && before[i] != wanted[i].second)
            injectKey(wanted[i].first, !before[i], true);
}

xkb_mod_mask_t X11Keyboard::lockOf(int virtualKey) const {
    switch (virtualKey) {
        case kVkCapital: return keymap_.modifiers().capsLock.locked;
        case kVkNumLock: return keymap_.modifiers().numLock.locked;
        case kVkScroll: return keymap_.modifiers().scrollLock.locked;
        default: return 0;
    }
}

// The reported state will do unless CapsLock was typed behind that report.
bool X11Keyboard::capsLockOn() {
    if (capsLockTyped_) return (GetKeyState(kVkCapital) & 1) != 0;
    return (keymap_.reportedLocks() & keymap_.modifiers().capsLock.locked) != 0;
}

std::int16_t X11Keyboard::GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255 || !connection_.alive()) return 0;
    followKeymap();
    startTyping();
    const auto state = xcb_xkb_get_state(connection_.get(), connection_.coreKeyboard());
    const auto keys = xcb_query_keymap(connection_.get());
    const XReply<xcb_xkb_get_state_reply_t> locks(
        xcb_xkb_get_state_reply(connection_.get(), state, nullptr));
    const XReply<xcb_query_keymap_reply_t> down(
        xcb_query_keymap_reply(connection_.get(), keys, nullptr));
    if (!locks || !down) return 0;
    const auto isDown = [&](std::uint8_t key) {
        xkb_keycode_t code = namedKeycode(key);
        if (code == 0) code = MapVirtualKeyExA(key) + kScanToKeycode;
        return code < 256 && (down->keys[code / 8] >> (code % 8) & 1) != 0;
    };
    constexpr std::uint8_t kSides = 0xA0;
    const auto key = static_cast<std::uint8_t>(virtualKey);
    bool held = isDown(key) || (key == kVkMenu && altKeypad_.holdsAlt());
    if (key >= kVkShift && key <= kVkMenu)  // the key of the right-hand side counts too
        held = held || isDown(static_cast<std::uint8_t>(kSides + (key - kVkShift) * 2 + 1));
    const bool on = (locks->lockedMods & lockOf(virtualKey)) != 0;
    return static_cast<std::int16_t>((held ? kHeld : 0) | (on ? 1 : 0));
}

unsigned char X11Keyboard::CharToOemA(char character) { return ansiToOem(character); }

void X11Keyboard::SendKeys(std::string_view /*script*/, bool /*wait*/) {
    throw RuntimeError(error_number::kInvalidCall,
                       std::string("Appel de procédure ou argument incorrect."_ansi));
}

void X11Keyboard::GetKeyboardState(std::span<std::uint8_t, 256> state) {
    for (int key = 0; key < 256; ++key) {
        const std::int16_t value = GetKeyState(key);
        state[static_cast<std::size_t>(key)] =
            static_cast<std::uint8_t>((value < 0 ? 0x80 : 0) | (value & 1));
    }
}

void X11Keyboard::SetKeyboardState(std::span<const std::uint8_t, 256> state) {
    for (const std::uint16_t lock : {kVkCapital, kVkNumLock, kVkScroll}) {
        const bool on = (GetKeyState(lock) & 1) != 0;
        if (on == ((state[lock] & 1) != 0)) continue;
        keybd_event(static_cast<std::uint8_t>(lock), 0, 0);
        keybd_event(static_cast<std::uint8_t>(lock), 0, kKeyEventKeyUp);
    }
}

}  // namespace kalvo
