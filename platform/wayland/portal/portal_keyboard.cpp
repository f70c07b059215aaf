#include "platform/wayland/portal/portal_keyboard.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cstddef>
#include <thread>
#include <utility>

#include "platform/shared/confirming_keys.h"
#include "platform/wayland/portal/portal_token.h"
#include "platform/wayland/wayland_connection.h"
#include "platform/x11/keymap/character_symbol.h"
#include "platform/x11/layout/named_keys.h"
#include "text/ansi_text.h"
#include "text/resume_next.h"

namespace kalvo {

namespace {

using std::chrono::milliseconds;

constexpr std::chrono::microseconds kTimeOfKey{1400};
constexpr milliseconds kMostAhead{50};
constexpr std::uint16_t kNoKey = 0xFFFF;
constexpr std::int16_t kHeld = -0x8000;

bool isUp(const KeyRecord& record) { return (record.flags & kKeyEventKeyUp) != 0; }

// Symbols of characters; anything else has a key on every keyboard.
bool isCharacter(xkb_keysym_t symbol) { return symbol < 0xFE00 || symbol >= 0x1000000; }

// What the toolkit's D-Bus wants of a program. Where there is none it stays to the end: the
// connection to the bus outlives every keyboard.
void needApplication() {
    if (QCoreApplication::instance() != nullptr) return;
    static std::array<char, 14> name = {"kalvo-horizon"};
    static std::array<char*, 2> arguments = {name.data(), nullptr};
    static int count = 1;
    static const auto* const application = new QCoreApplication(count, arguments.data());
    static_cast<void>(application);
}

}  // namespace

bool PortalKeyboard::available() {
    needApplication();
    return PortalSession::available();
}

PortalKeyboard::PortalKeyboard() {
    if (!available()) failToConnect("ce bureau n'a pas de portail pour le clavier."_ansi);
    session_ = std::make_unique<PortalSession>();
}

PortalKeyboard::~PortalKeyboard() {
    for (const xkb_keysym_t symbol : std::exchange(down_, {})) session_->sendKey(symbol, false);
    session_->finish();
}

// With a session its keys come up.
bool PortalKeyboard::connected() {
    const bool open = session_->alive() && session_->state() == PortalSession::State::kOpen;
    if (!open) down_.clear();
    return open;
}

std::string_view PortalKeyboard::remark() const {
    switch (session_->state()) {
        case PortalSession::State::kOpen: return {};
        case PortalSession::State::kRefused:
            return "Le bureau n'a pas autorisé le contrôle du clavier : rien ne peut être saisi, les lots attendent dans le journal. Retapez un lot pour que la question revienne."_ansi;
        case PortalSession::State::kClosed:
            return "Le bureau a retiré le contrôle du clavier : rien ne peut être saisi. La question va revenir, une fois."_ansi;
        default:
            return readPortalToken().isEmpty()
                       ? "Le bureau demande, une fois par session, s'il faut autoriser le contrôle du clavier : acceptez, sinon rien ne peut être saisi."_ansi
                       : std::string_view();
    }
}

TypingStop PortalKeyboard::obstacle() {
    if (connected()) return TypingStop::kNone;
    if (!session_->alive()) return TypingStop::kKeyboardLost;
    switch (session_->state()) {
        case PortalSession::State::kRefused: return TypingStop::kLeaveRefused;
        case PortalSession::State::kClosed: return TypingStop::kLeaveWithdrawn;
        default: return TypingStop::kLeaveAwaited;
    }
}

bool PortalKeyboard::awaitTarget(int limit) {
    const auto ahead = std::chrono::duration_cast<milliseconds>(due_ - Clock::now());
    if (ahead < kMostAhead) return true;
    std::this_thread::sleep_for(std::min(milliseconds(limit), ahead));
    return false;
}

// The modifiers that a key itself needs are not sent: its symbol says them.
void PortalKeyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty()) return;
    const std::uint16_t key = records.back().virtualKey;
    if (key == kNoKey) return;
    const bool altGr = (key & kNeedsAltGr) == kNeedsAltGr;
    for (const KeyRecord& record : records.first(records.size() - 1))
        if (record.virtualKey != kVkShift && !altGr) altKeypad_.feed(record);
    altKeypad_.feed(records.back());
    if (manner_.confirmPause > 0 && confirms(records.back())) rest(manner_.confirmPause);
}

// NumLock is switched around the codes of the keypad, which come to symbols here: it is not
// the user's.
void PortalKeyboard::passKey(const KeyRecord& record) {
    if ((record.virtualKey & 0xFFU) == kVkNumLock) {
        numLock_ ^= !isUp(record);
        return;
    }
    const xkb_keysym_t symbol = symbolOf(record);
    if (symbol == XKB_KEY_NoSymbol) return;
    const auto strokes = sessionLayout_.strokesFor(symbol);
    if (isCharacter(symbol) && (strokes.size() != 1 || strokes.front().code != 0)) {
        if (!isUp(record)) tap(symbol);
        return;
    }
    send(symbol, !isUp(record));
}

xkb_keysym_t PortalKeyboard::symbolOf(const KeyRecord& record) {
    const auto virtualKey = static_cast<std::uint8_t>(record.virtualKey & 0xFFU);
    if (const xkb_keysym_t named = symbolOfNamedKey(virtualKey); named != XKB_KEY_NoSymbol)
        return named;
    const xkb_keycode_t keycode = layout_.keycodeOf(record);
    const std::size_t level = ((record.virtualKey & kNeedsShift) != 0 ? 1U : 0U) +
                              ((record.virtualKey & kNeedsAltGr) == kNeedsAltGr ? 2U : 0U);
    for (const MapKey& key : map_.keys)
        if (key.keycode == keycode && level < key.symbols.size()) return key.symbols[level];
    return XKB_KEY_NoSymbol;
}

// Releases of what is not down are left out.
void PortalKeyboard::send(xkb_keysym_t symbol, bool down) {
    const auto at = std::find(down_.begin(), down_.end(), symbol);
    if (down) {
        if (at == down_.end()) down_.push_back(symbol);
        due_ = std::max(due_, Clock::now()) + kTimeOfKey;
    } else {
        if (at == down_.end()) return;
        down_.erase(at);
    }
    session_->sendKey(symbol, down);
    if (manner_.keyPause > 0) rest(manner_.keyPause);
}

// Milliseconds, behind what has been sent.
void PortalKeyboard::rest(int time) {
    session_->finish();
    std::this_thread::sleep_for(milliseconds(time));
}

void PortalKeyboard::strike(const SessionKey& key) {
    if (key.code == 0) {
        for (const bool down : {true, false}) send(key.symbol, down);
        return;
    }
    const bool shift = (key.level & 1U) != 0;
    const bool altGr = (key.level & 2U) != 0;
    if (shift) send(XKB_KEY_Shift_L, true);
    if (altGr) send(XKB_KEY_ISO_Level3_Shift, true);
    for (const bool down : {true, false}) session_->sendKeyCode(key.code, down);
    if (altGr) send(XKB_KEY_ISO_Level3_Shift, false);
    if (shift) send(XKB_KEY_Shift_L, false);
}

// A character, by the keys that lead there.
void PortalKeyboard::tap(xkb_keysym_t symbol) {
    const auto strokes = sessionLayout_.strokesFor(symbol);
    for (const SessionKey& stroke : strokes) strike(stroke);
    if (!strokes.empty()) return;
    const char character = unicodeToAnsi(xkb_keysym_to_utf32(symbol));
    if (!paste(character) && untyped_.find(character) == std::string::npos) untyped_ += character;
}

// Through the X server that most Wayland sessions have: compositors hand its clipboard on.
bool PortalKeyboard::paste(char character) {
    if (manner_.method != TypingMethod::kClipboard) return false;
    resumeNext([&] {
        if (!clipboard_) clipboard_ = std::make_unique<ClipboardPaste>("");
    });
    if (!clipboard_ || !clipboard_->offer({&character, 1})) return false;
    send(XKB_KEY_Control_L, true);
    send(XKB_KEY_v, true);
    send(XKB_KEY_v, false);
    send(XKB_KEY_Control_L, false);
    session_->finish();
    static_cast<void>(clipboard_->awaitAnyFetch());
    return true;
}

void PortalKeyboard::prepareFor(std::string_view) {
    if (mannerOf_) manner_ = mannerOf_({});
}

std::string PortalKeyboard::takeUntyped() {
    if (clipboard_) clipboard_->putBack();
    return std::exchange(untyped_, {});
}

// Modifiers that a script holds are lifted meanwhile.
void PortalKeyboard::passComposed(char character) {
    const xkb_keysym_t symbol = symbolOfCharacter(character);
    if (symbol == XKB_KEY_NoSymbol) return;
    const std::vector<xkb_keysym_t> held = down_;
    for (const xkb_keysym_t key : held) send(key, false);
    tap(symbol);
    for (const xkb_keysym_t key : held) send(key, true);
}

void PortalKeyboard::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode,
                                 std::uint32_t flags) {
    const KeyRecord record{.virtualKey = virtualKey, .scanCode = scanCode, .flags = flags};
    SendInput({&record, 1});
}

// No desktop tells what the user has locked.
std::int16_t PortalKeyboard::GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255) return 0;
    const xkb_keysym_t symbol = symbolOfNamedKey(static_cast<std::uint8_t>(virtualKey));
    const bool held = std::find(down_.begin(), down_.end(), symbol) != down_.end() ||
                      (virtualKey == kVkMenu && altKeypad_.holdsAlt());
    if (held) return kHeld;
    return virtualKey == kVkNumLock && numLock_ ? std::int16_t{1} : std::int16_t{0};
}

}  // namespace kalvo
