#include "keys/key_injection.h"

#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "keys/family_9x.h"
#include "text/number_text.h"

namespace kalvo {

namespace {

constexpr std::uint8_t kPlatform9x = 1;
constexpr std::int16_t kSettleTime = 20;  // milliseconds
constexpr int kKeysBetweenGlances = 64;
constexpr int kKeysBetweenLooks = 512;
constexpr std::uint32_t kTimeBetweenLooks = 10;    // milliseconds
constexpr std::uint32_t kTimeBetweenAnswers = 33;  // milliseconds
constexpr int kHoldInterval = 5;                   // milliseconds

constexpr Key kCapsLockKey{Key::Kind::kNamed, kVkCapital};
constexpr Key kNumLockKey{Key::Kind::kNamed, kVkNumLock};
constexpr Key kScrollLockKey{Key::Kind::kNamed, kVkScroll};
constexpr Key kTabKey{Key::Kind::kNamed, 0x09};
constexpr Key kEnterKey{Key::Kind::kNamed, 0x0D};

// The modifiers a shift state asks for, in the order in which they are sent.
struct NeededModifier {
    std::uint16_t bit;
    std::uint16_t virtualKey;
};
constexpr std::array<NeededModifier, 3> kNeededModifiers = {
    {{kNeedsShift, kVkShift}, {kNeedsControl, kVkControl}, {kNeedsAlt, kVkMenu}}};

// Whether keys that were sent may not have arrived.
bool losesKeys(TypingStop stop) {
    return stop == TypingStop::kKeyboardLost || stop == TypingStop::kKeysRefused ||
           stop == TypingStop::kLeaveWithdrawn || stop == TypingStop::kLeaveAwaited ||
           stop == TypingStop::kLeaveRefused;
}

// The virtual key and shift state of a key in a layout; 0 when it types nothing.
// The answer "all bits set" for a character the layout lacks counts as it stands.
std::uint16_t virtualKeyOf(Key key, KeyboardLayout& layout) {
    switch (key.kind) {
        case Key::Kind::kShift: return kVkShift;
        case Key::Kind::kControl: return kVkControl;
        case Key::Kind::kAlt: return kVkMenu;
        case Key::Kind::kNamed: return key.code;
        case Key::Kind::kLiteral: break;
    }
    return static_cast<std::uint16_t>(layout.VkKeyScanExA(static_cast<char>(key.code)));
}

}  // namespace

Typing Keysend::SendKeyScript(std::string_view script, std::int16_t wait) {
    const OsFamily family = GetOsFamily();
    chooseFlags(family);
    if (family == OsFamily::k9x) {
        sendByPlatform(keyboard_, script, wait);
        return {script.size(), TypingStop::kNone, 0, {}, {}};
    }
    const LockStates initial = switchLocksOff();
    KeyScriptReader reader(script, [this](char c) { return keyboard_.CharToOemA(c); });
    Typing typing = typeEvents(reader);
    restoreLocks(initial, reader.locks(), wait);
    keyboard_.finishInput();
    keyboard_.endTyping();
    if (wait != 0) WaitWithEvents(kSettleTime);
    if (typing.stop != TypingStop::kNone) return typing;
    const TypingStop obstacle = keyboard_.obstacle();
    if (losesKeys(obstacle))
        typing.stop = obstacle;
    else  // A script may end early by itself: then the rest of it types nothing.
        typing = {script.size(), TypingStop::kNone, 0, {}, {}};
    return typing;
}

void Keysend::chooseFlags(OsFamily family) {
    DownFlags = family == OsFamily::k9x ? 0 : kKeyEventScanCode;
    UpFlags = DownFlags | kKeyEventKeyUp;
}

Keysend::LockStates Keysend::switchLocksOff() {
    LockStates initial;
    initial.capsLock = keyboard_.GetKeyState(kVkCapital) != 0;
    if (initial.capsLock) typeKey(kCapsLockKey);
    initial.numLock = keyboard_.GetKeyState(kVkNumLock) != 0;
    if (initial.numLock) FlipNumLock();
    initial.scrollLock = keyboard_.GetKeyState(kVkScroll) != 0;
    if (initial.scrollLock) typeKey(kScrollLockKey);
    return initial;
}

Typing Keysend::typeEvents(KeyScriptReader& reader) {
    Typing typing;
    lookDue_ = true;
    for (;;) {
        const bool looking = typing.stop == TypingStop::kNone && reader.betweenKeys();
        const bool late = looking && !keyboard_.awaitTarget(kTimeBetweenLooks);
        lookDue_ = lookDue_ || late;
        if (looking && timeToLook()) {
            keyboard_.finishInput();
            const std::size_t typed = reader.typed();
            typing.stop = look(typed);
            if (!losesKeys(typing.stop)) {
                auto continuation = reader.continuation();
                typing.typed = typed;
                typing.resumeAt = continuation.place;
                typing.lead = std::move(continuation.lead);
            }
            if (typing.stop == TypingStop::kNone) {
                if (news_.progress) news_.progress(typed);
                // Moved since the look, or free to move since nothing holds it: that has to be
                // looked at first.
                if (late || !keyboard_.holdLayout()) {
                    lookDue_ = true;
                    continue;
                }
            } else {
                reader.stop();
            }
        }
        const auto event = reader.next();
        if (!event) break;
        switch (event->action) {
            case KeyEvent::Action::kDown: SendKeyDown(event->key); break;
            case KeyEvent::Action::kUp: SendKeyUp(event->key); break;
            case KeyEvent::Action::kFlipNumLock: FlipNumLock(); break;
        }
        if (event->key == kEnterKey || event->key == kTabKey) lookDue_ = true;
    }
    keyboard_.finishInput();
    return typing;
}

// Enter and Tab end what belongs together: a look there keeps what goes wrong to one
// record. As long as the layout is held little can happen, and a glance does.
bool Keysend::timeToLook() {
    const std::uint32_t now = events_.GetTickCount();
    if (++keysSinceLook_ % kKeysBetweenGlances == 0 && (events_.ending() || watch_.glance()))
        lookDue_ = true;
    if (keysSinceLook_ >= kKeysBetweenLooks || now - lastLook_ >= kTimeBetweenLooks)
        lookDue_ = true;
    if (!lookDue_) return false;
    lookDue_ = false;
    keysSinceLook_ = 0;
    lastLook_ = now;
    return true;
}

// Waits, too, as long as the watch wants it.
TypingStop Keysend::look(std::size_t typed) {
    if (events_.GetTickCount() - lastAnswer_ >= kTimeBetweenAnswers) {
        lastAnswer_ = events_.GetTickCount();
        events_.answerUser();
    }
    TypingStop stop = lookOnce();
    const bool disturbed = watch_.hold() == TypingWatch::Hold::kUserKey;
    while (stop == TypingStop::kNone && watch_.hold() != TypingWatch::Hold::kNone) {
        events_.answerUser();
        events_.Sleep(kHoldInterval);
        stop = lookOnce();
    }
    if (disturbed && news_.disturbed) news_.disturbed(typed);
    return stop;
}

TypingStop Keysend::lookOnce() {
    if (events_.ending()) return TypingStop::kProgramEnds;
    const TypingStop obstacle = keyboard_.obstacle();
    if (obstacle != TypingStop::kNone && obstacle != TypingStop::kTargetRefuses) return obstacle;
    // Which application has come to the front says more than that it takes no keys.
    const TypingStop stop = watch_.look();
    return stop == TypingStop::kNone ? obstacle : stop;
}

// Every lock was switched off before the script: a tracker that differs from the
// initial state means one more press.
void Keysend::restoreLocks(const LockStates& initial, const LockTrackers& trackers,
                           std::int16_t wait) {
    const std::string exceptions = withSignPosition(wait);
    const auto restores = [&](char digit) { return exceptions.find(digit) == std::string::npos; };
    if (restores('2') && trackers.capsLock != initial.capsLock) typeKey(kCapsLockKey);
    if (restores('3') && trackers.numLock != initial.numLock) FlipNumLock();
    if (restores('4') && trackers.scrollLock != initial.scrollLock) typeKey(kScrollLockKey);
}

void Keysend::typeKey(Key key) {
    SendKeyDown(key);
    SendKeyUp(key);
}

void Keysend::SendKeyDown(Key key) { sendKey(key, DownFlags); }

// The modifiers go up before the key itself: applications expect this order.
void Keysend::SendKeyUp(Key key) { sendKey(key, UpFlags); }

void Keysend::sendKey(Key key, std::uint32_t flags) {
    KeyboardLayout& layout = keyboard_.foregroundLayout();
    const std::uint16_t value = virtualKeyOf(key, layout);
    if (value == 0) return;

    std::array<KeyRecord, kNeededModifiers.size() + 1> records;
    std::size_t count = 0;
    for (const auto& [bit, virtualKey] : kNeededModifiers)
        if ((value & bit) != 0)
            records[count++] = {virtualKey, layout.MapVirtualKeyExA(virtualKey), flags};
    records[count++] = {value, layout.MapVirtualKeyExA(value & 0xFFU), flags};
    keyboard_.SendInput(std::span(records).first(count));
}

void Keysend::FlipNumLock() {
    if (GetOsFamily() == OsFamily::kNt) {
        typeKey(kNumLockKey);
        return;
    }
    flipNumLockState(keyboard_);
}

OsFamily Keysend::GetOsFamily() {
    return keyboard_.platformIdentifier() == kPlatform9x ? OsFamily::k9x : OsFamily::kNt;
}

void Keysend::WaitWithEvents(std::int16_t milliseconds) {
    const std::uint32_t start = events_.GetTickCount();
    events_.DoEvents();
    // A tick count below the start has wrapped around, which ends the wait.
    for (std::uint32_t now = events_.GetTickCount();
         now >= start && now - start <= static_cast<std::uint32_t>(milliseconds);
         now = events_.GetTickCount())
        events_.DoEvents();
}

}  // namespace kalvo
