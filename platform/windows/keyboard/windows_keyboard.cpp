#include "platform/windows/keyboard/windows_keyboard.h"

#include <array>
#include <vector>

#include "platform/confirming_keys.h"
#include "platform/windows/file_handle.h"
#include "platform/windows/wide_text.h"

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

// The keys of the block between letters and keypad, whose scan codes the keypad shares.
bool isExtended(const KeyRecord& record) {
    const unsigned key = record.virtualKey & 0xFFU;
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE;
}

// The file name of the program in front, "notepad.exe"; empty when it cannot be told.
std::string programInFront() {
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    const FileHandle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    std::array<wchar_t, MAX_PATH> path{};
    auto length = static_cast<DWORD>(path.size());
    if (!handle || QueryFullProcessImageNameW(handle.get(), 0, path.data(), &length) == 0)
        return {};
    const std::string name = ansiFromWide({path.data(), length});
    return name.substr(name.find_last_of('\\') + 1);
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
    for (const KeyRecord& record : records) {
        inputs.push_back(inputOf(record));
        if (manner_.extendedKeys && isExtended(record))
            inputs.back().ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    }
    sender_.send(inputs, manner_.keyPause);
    if (manner_.confirmPause > 0 && !records.empty() && confirms(records.back()))
        Sleep(static_cast<DWORD>(manner_.confirmPause));
}

TypingStop WindowsKeyboard::obstacle() {
    if (!access_.open()) return TypingStop::kSessionLocked;
    if (sender_.refused()) return TypingStop::kKeysRefused;
    return access_.targetAboveUs() ? TypingStop::kTargetRefuses : TypingStop::kNone;
}

void WindowsKeyboard::prepareFor(std::string_view /*script*/) {
    sender_.acceptAgain();
    if (!mannerOf_) return;
    const std::array<std::string, 1> names = {programInFront()};
    manner_ = mannerOf_(std::span(names).first(names.front().empty() ? 0 : 1));
}

std::optional<std::string> WindowsKeyboard::clipboardText() {
    if (OpenClipboard(nullptr) == 0) return std::nullopt;
    std::optional<std::string> text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* wide = static_cast<const wchar_t*>(GlobalLock(data)); wide != nullptr) {
            text = ansiFromWide(wide);
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return text;
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
