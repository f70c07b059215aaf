#include "platform/windows/keyboard/windows_keyboard.h"

#include <vector>

namespace kalvo {

namespace {

INPUT inputOf(const KeyRecord& record) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = record.virtualKey;
    input.ki.wScan = record.scanCode;
    input.ki.dwFlags = record.flags;
    return input;
}

}  // namespace

std::int16_t WindowsLayout::VkKeyScanExA(char character) {
    return ::VkKeyScanExA(character, layout_);
}

std::uint16_t WindowsLayout::MapVirtualKeyExA(std::uint16_t virtualKey) {
    return static_cast<std::uint16_t>(::MapVirtualKeyExA(virtualKey, MAPVK_VK_TO_VSC, layout_));
}

KeyboardLayout& WindowsKeyboard::foregroundLayout() {
    const DWORD thread = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    layout_ = WindowsLayout(GetKeyboardLayout(thread));
    return layout_;
}

void WindowsKeyboard::SendInput(std::span<const KeyRecord> records) {
    std::vector<INPUT> inputs;
    inputs.reserve(records.size());
    for (const KeyRecord& record : records) inputs.push_back(inputOf(record));
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void WindowsKeyboard::keybd_event(std::uint8_t virtualKey, std::uint8_t scanCode,
                                  std::uint32_t flags) {
    ::keybd_event(virtualKey, scanCode, flags, 0);
}

std::int16_t WindowsKeyboard::GetKeyState(int virtualKey) {
    // The state belongs to the thread and follows the input it has looked at.
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    return ::GetKeyState(virtualKey);
}

std::uint16_t WindowsKeyboard::MapVirtualKeyA(std::uint16_t virtualKey) {
    return static_cast<std::uint16_t>(::MapVirtualKeyA(virtualKey, MAPVK_VK_TO_VSC));
}

std::uint8_t WindowsKeyboard::platformIdentifier() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    GetVersionExA(&version);
    return static_cast<std::uint8_t>(version.dwPlatformId & 0xFFU);
}

unsigned char WindowsKeyboard::CharToOemA(char character) {
    char oem = 0;
    CharToOemBuffA(&character, &oem, 1);
    return static_cast<unsigned char>(oem);
}

void WindowsKeyboard::GetKeyboardState(std::span<std::uint8_t, 256> state) {
    ::GetKeyboardState(state.data());
}

void WindowsKeyboard::SetKeyboardState(std::span<const std::uint8_t, 256> state) {
    std::vector<BYTE> copy(state.begin(), state.end());  // the function takes no constant
    ::SetKeyboardState(copy.data());
}

}  // namespace kalvo
