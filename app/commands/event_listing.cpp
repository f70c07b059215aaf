#include "app/commands/event_listing.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace kalvo {

namespace {

constexpr std::size_t kPieceSize = 65536;

bool isLock(std::uint16_t virtualKey) {
    return virtualKey == kVkCapital || virtualKey == kVkNumLock || virtualKey == kVkScroll;
}

}  // namespace

EventListing::EventListing(KeyboardLayout& layout, std::string_view locks,
                           std::function<void(std::string_view)> write)
    : layout_(layout), write_(std::move(write)) {
    const auto named = [&](char lock) { return locks.find(lock) != std::string_view::npos; };
    toggled_[kVkCapital] = named('C') ? 1 : 0;
    toggled_[kVkNumLock] = named('N') ? 1 : 0;
    toggled_[kVkScroll] = named('S') ? 1 : 0;
}

void EventListing::SendInput(std::span<const KeyRecord> records) {
    const char* separator = "";
    for (const KeyRecord& record : records) {
        const bool up = (record.flags & kKeyEventKeyUp) != 0;
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%s vk=%04X sc=%04X", up ? "up" : "down",
                      unsigned{record.virtualKey}, unsigned{record.scanCode});
        pending_.append(separator).append(text.data());
        separator = "; ";
        if (!up && isLock(record.virtualKey)) toggled_[record.virtualKey] ^= 1U;
    }
    pending_.push_back('\n');
    if (pending_.size() >= kPieceSize) finish();
}

void EventListing::finish() {
    write_(pending_);
    pending_.clear();
}

void EventListing::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode,
                               std::uint32_t flags) {
    const KeyRecord record{virtualKey, scanCode, flags};
    SendInput({&record, 1});
}

std::int16_t EventListing::GetKeyState(int virtualKey) {
    return toggled_.at(static_cast<std::size_t>(virtualKey));
}

}  // namespace kalvo
