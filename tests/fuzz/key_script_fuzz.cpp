// Whatever the script: keys that go down come up, locks end as they were, and only a
// repeat count makes many events of few characters.
#include <map>

#include "keys/key_injection.h"
#include "tests/fuzz/fuzz_property.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_keyboard.h"

namespace kalvo {
namespace {

constexpr std::size_t kMostEvents = 4'000;
// A character that is typed as the text of its Alt+keypad script, down and up.
constexpr std::size_t kMostEventsOfACharacter = 100;

void checkKeysComeUp(const testing::FakeKeyboard& keyboard) {
    std::map<std::uint16_t, int> down;
    for (const auto& batch : keyboard.batches)
        for (const KeyRecord& record : batch) {
            down[record.virtualKey] += (record.flags & kKeyEventKeyUp) == 0 ? 1 : -1;
            require(down[record.virtualKey] >= 0, "a key comes up after it went down");
        }
    for (const auto& [key, count] : down) require(count == 0, "every key comes up");
}

}  // namespace

void fuzz(FuzzInput& input) {
    testing::FakeKeyboard keyboard;
    testing::FakeEventPump events;
    const auto wait = input.ConsumeIntegralInRange<std::int16_t>(0, 999);
    std::map<int, bool> expected;
    for (const int lock : {kVkCapital, kVkNumLock, kVkScroll})
        keyboard.setLock(lock, expected[lock] = input.ConsumeBool());
    const std::string script = input.rest();
    KeyScriptReader reader(script, ansiToOem);
    std::size_t count = 0;
    while (count < kMostEvents && reader.next()) ++count;
    const bool repeats = script.find(' ') != std::string::npos;
    require(repeats || count <= kMostEventsOfACharacter * script.size(),
            "events are in proportion to the script");
    if (count == kMostEvents) return;

    Keysend(keyboard, events).SendKeyScript(script, wait);
    checkKeysComeUp(keyboard);
    // The digits of the wait name the locks that are left as the script has them.
    const auto isLeft = [&](char digit) {
        return std::to_string(wait).find(digit) != std::string::npos;
    };
    if (isLeft('2')) expected[kVkCapital] = reader.locks().capsLock;
    if (isLeft('3')) expected[kVkNumLock] = reader.locks().numLock;
    if (isLeft('4')) expected[kVkScroll] = reader.locks().scrollLock;
    for (const auto& [lock, on] : expected)
        require(keyboard.lockOn(lock) == on, "locks end as they were");
}

}  // namespace kalvo
