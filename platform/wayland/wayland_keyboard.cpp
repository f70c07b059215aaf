#include "platform/wayland/wayland_keyboard.h"

#include <array>
#include <cstddef>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/x11/layout/named_keys.h"
#include "text/resume_next.h"
#include "virtual-keyboard-unstable-v1.h"

namespace kalvo {

namespace {

// An X application looks keys up in the map that is in force when it gets round to them,
// and with the keyboard its map goes.
constexpr std::chrono::milliseconds kLastKeys{300};

constexpr std::uint16_t kNoKey = 0xFFFF;
constexpr std::int16_t kHeld = -0x8000;

bool isUp(const KeyRecord& record) { return (record.flags & kKeyEventKeyUp) != 0; }

// The release of Enter, Tab or a function key: an application may begin something then.
bool confirms(const KeyRecord& record) {
    constexpr unsigned kTab = 0x09;
    constexpr unsigned kEnter = 0x0D;
    constexpr unsigned kF1 = 0x70;
    constexpr unsigned kF24 = 0x87;
    const unsigned key = record.virtualKey & 0xFFU;
    return isUp(record) && (key == kTab || key == kEnter || (key >= kF1 && key <= kF24));
}

bool isControlOrAlt(const KeyRecord& record) {
    return record.virtualKey == kVkControl || record.virtualKey == kVkMenu;
}

}  // namespace

bool WaylandKeyboard::available() {
    bool offered = false;
    resumeNext(
        [&] { offered = WaylandConnection().offers(zwp_virtual_keyboard_manager_v1_interface); });
    return offered;
}

WaylandKeyboard::WaylandKeyboard() = default;

WaylandKeyboard::~WaylandKeyboard() {
    keys_.releaseAll();
    connection_.sync();
    const auto since = Clock::now() - lastTyping_;
    if (since < kLastKeys) std::this_thread::sleep_for(kLastKeys - since);
}

void WaylandKeyboard::prepareFor(std::string_view) {
    if (!mannerOf_) return;
    if (!windows_ || !windows_->alive())
        resumeNext([this] { windows_ = std::make_unique<ToplevelWindows>(); });
    std::vector<std::string> names;
    if (windows_) names.push_back(windows_->applicationOf(windows_->focused()));
    manner_ = mannerOf_(names);
    keys_.setPause(std::chrono::milliseconds(manner_.keyPause));
}

bool WaylandKeyboard::awaitTarget(int milliseconds) {
    return !connection_.usable() || backlog_.await(std::chrono::milliseconds(milliseconds));
}

// Control with Alt around a key that needs both is AltGr; sent for themselves they stay
// what they are. The key's own record tells what the modifiers before it are for.
void WaylandKeyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty() || !connection_.usable()) return;
    lastTyping_ = Clock::now();
    const std::uint16_t key = records.back().virtualKey;
    if (key == kNoKey) return;
    const bool altGr = (key & kNeedsAltGr) == kNeedsAltGr;
    for (const KeyRecord& record : records) {
        if (!altGr || !isControlOrAlt(record))
            altKeypad_.feed(record);
        else if (record.virtualKey == kVkMenu)
            inject(kLevel3Key, isUp(record), true);
    }
    if (confirms(records.back())) keys_.rest(std::chrono::milliseconds(manner_.confirmPause));
}

void WaylandKeyboard::passKey(const KeyRecord& record) {
    const auto virtualKey = static_cast<std::uint8_t>(record.virtualKey & 0xFFU);
    inject(layout_.keycodeOf(record), isUp(record), isModifierKey(virtualKey));
}

// Releases of keys that are not down are left out, and a modifier goes down once.
void WaylandKeyboard::inject(xkb_keycode_t key, bool up, bool modifier) {
    if (key == 0) return;
    if (!up) {
        if (!modifier || !keys_.isDown(key)) keys_.press(key);
    } else if (keys_.isDown(key)) {
        keys_.release(key);
    }
}

// With exactly the modifiers it needs; those a script holds are lifted meanwhile, and
// CapsLock has no influence.
void WaylandKeyboard::passComposed(char character) {
    const auto stroke = layout_.strokeOf(character);
    if (!stroke) return;
    const std::array<std::pair<xkb_keycode_t, bool>, 4> wanted = {
        {{kShiftKey, (stroke->shiftState & kNeedsShift) != 0},
         {kLevel3Key, (stroke->shiftState & kNeedsAltGr) == kNeedsAltGr},
         {kControlKey, false},
         {kAltKey, false}}};
    std::array<bool, 4> before{};
    const bool capsLock = keys_.isLocked(XKB_MOD_NAME_CAPS);
    if (capsLock) keys_.tap(kCapsLockKey);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        before[i] = keys_.isDown(wanted[i].first);
        if (before[i] != wanted[i].second) inject(wanted[i].first, before[i], true);
    }
    keys_.tap(stroke->keycode);
    for (std::size_t i = wanted.size(); i-- > 0;)
        if (before[i] != wanted[i].second) inject(wanted[i].first, !before[i], true);
    if (capsLock) keys_.tap(kCapsLockKey);
}

void WaylandKeyboard::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode,
                                  std::uint32_t flags) {
    const KeyRecord record{.virtualKey = virtualKey, .scanCode = scanCode, .flags = flags};
    SendInput({&record, 1});
    connection_.flush();
}

std::int16_t WaylandKeyboard::GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255) return 0;
    const KeyRecord record{
        .virtualKey = static_cast<std::uint16_t>(virtualKey), .scanCode = 0, .flags = 0};
    const bool held =
        keys_.isDown(layout_.keycodeOf(record)) || (virtualKey == kVkMenu && altKeypad_.holdsAlt());
    const bool on = (virtualKey == kVkCapital && keys_.isLocked(XKB_MOD_NAME_CAPS)) ||
                    (virtualKey == kVkNumLock && keys_.isLocked(XKB_MOD_NAME_NUM));
    return static_cast<std::int16_t>((held ? kHeld : 0) | (on ? 1 : 0));
}

}  // namespace kalvo
