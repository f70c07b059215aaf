#include "app/commands/event_listing.h"

#include <gtest/gtest.h>

#include <string>

#include "keys/key_injection.h"
#include "tests/support/fake_event_pump.h"
#include "tests/support/fake_keyboard.h"

namespace kalvo {
namespace {

std::string list(std::string_view script, std::string_view locks) {
    testing::FakeKeyboard layout;
    testing::FakeEventPump events;
    std::string text;
    EventListing listing(layout, locks, [&](std::string_view piece) { text += piece; });
    Keysend(listing, events).SendKeyScript(script, 0);
    listing.finish();
    return text;
}

TEST(EventListing, HasALineForEachInjection) {
    EXPECT_EQ(list("aB", ""),
              "down vk=0041 sc=00C1\n"
              "up vk=0041 sc=00C1\n"
              "down vk=0010 sc=0090; down vk=0142 sc=00C2\n"
              "up vk=0010 sc=0090; up vk=0142 sc=00C2\n");
    EXPECT_EQ(list("", ""), "");
}

TEST(EventListing, LocksThatAreOnAreSwitchedOffAndBackOn) {
    const std::string capsLock = "down vk=0014 sc=0094\nup vk=0014 sc=0094\n";
    const std::string scrollLock = "down vk=0091 sc=0011\nup vk=0091 sc=0011\n";
    const std::string letter = "down vk=0041 sc=00C1\nup vk=0041 sc=00C1\n";
    EXPECT_EQ(list("a", "CS"), capsLock + scrollLock + letter + capsLock + scrollLock);
    EXPECT_EQ(list("{CAPSLOCK}", "C"), capsLock + capsLock)
        << "off at first, then the script's own";
}

}  // namespace
}  // namespace kalvo
