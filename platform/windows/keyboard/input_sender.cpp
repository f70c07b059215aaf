#include "platform/windows/keyboard/input_sender.h"

#include <algorithm>
#include <cstddef>

namespace kalvo {

namespace {

constexpr WORD kKeyByte = 0xFF;  // of a virtual key; the shift state of its layout is above

bool isUp(const INPUT& input) { return (input.ki.dwFlags & KEYEVENTF_KEYUP) != 0; }

bool sameKey(const INPUT& one, const INPUT& other) {
    return (one.ki.wVk & kKeyByte) == (other.ki.wVk & kKeyByte) && one.ki.wScan == other.ki.wScan &&
           (one.ki.dwFlags | KEYEVENTF_KEYUP) == (other.ki.dwFlags | KEYEVENTF_KEYUP);
}

}  // namespace

void InputSender::send(std::span<INPUT> inputs, int pause) {
    if (refused_ || inputs.empty()) return;
    bool taken = true;
    if (pause == 0) {
        taken = sendBatch(inputs);
    } else {
        for (std::size_t i = 0; taken && i < inputs.size(); ++i) {
            taken = sendBatch(inputs.subspan(i, 1));
            Sleep(static_cast<DWORD>(pause));
        }
    }
    if (taken) return;
    refused_ = true;
    releaseAll();
}

bool InputSender::sendBatch(std::span<INPUT> inputs) {
    const UINT taken = send_(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    for (const INPUT& input : inputs.first(std::min<std::size_t>(taken, inputs.size())))
        note(input);
    return taken == inputs.size();
}

void InputSender::note(const INPUT& input) {
    std::erase_if(down_, [&](const INPUT& key) { return sameKey(key, input); });
    if (!isUp(input)) down_.push_back(input);
}

// Each by itself: one that is refused, too, does not keep the others down.
void InputSender::releaseAll() {
    for (auto key = down_.rbegin(); key != down_.rend(); ++key) {
        key->ki.dwFlags |= KEYEVENTF_KEYUP;
        send_(1, &*key, sizeof(INPUT));
    }
    down_.clear();
}

bool InputSender::isDown(WORD virtualKey) const {
    return std::any_of(down_.begin(), down_.end(),
                       [&](const INPUT& key) { return (key.ki.wVk & kKeyByte) == virtualKey; });
}

}  // namespace kalvo
