#include "platform/windows/keyboard/windows_keyboard.h"

#include <array>
#include <vector>

#include "platform/shared/confirming_keys.h"
#include "platform/windows/file_handle.h"
#include "platform/windows/keyboard/front_window.h"
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
    const FileHandle handle(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processOf(GetForegroundWindow())));
    std::array<wchar_t, MAX_PATH> path{};
    auto length = static_cast<DWORD>(path.size());
    if (!handle || QueryFullProcessImageNameW(handle.get(), 0, path.data(), &length) == 0)
        return {};
    const std::string name = ansiFromWide({path.data(), length});
    return name.substr(name.find_last_of('\\') + 1);
}

}  // namespace

std::int16_t WindowsLayout::VkKeyScanExA(char character) {
    if (text_.passes(character)) return PassedText::kVkPacket;
    return ::VkKeyScanExA(character, layout_);
}

std::uint16_t WindowsLayout::MapVirtualKeyExA(std::uint16_t virtualKey) {
    if (virtualKey == PassedText::kVkPacket) return text_.code();
    return static_cast<std::uint16_t>(::MapVirtualKeyExA(virtualKey, MAPVK_VK_TO_VSC, layout_));
}

TypingStop WindowsKeyboard::obstacle() {
    if (!access_.open()) return TypingStop::kSessionLocked;
    if (sender_.refused()) return TypingStop::kKeysRefused;
    return access_.targetAboveUs() ? TypingStop::kTargetRefuses : TypingStop::kNone;
}

void WindowsKeyboard::prepareFor(std::string_view /*script*/) {
    sender_.acceptAgain();
    altKeypad_.drop();
    if (!mannerOf_) return;
    const std::array<std::string, 1> names = {programInFront()};
    manner_ = mannerOf_(std::span(names).first(names.front().empty() ? 0 : 1));
}

std::string WindowsKeyboard::takeUntyped() {
    if (clipboard_) clipboard_->putBack();
    return {};
}

KeyboardLayout& WindowsKeyboard::foregroundLayout() {
    const DWORD thread = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
    layout_.use(GetKeyboardLayout(thread));
    const bool asText =
        manner_.method == TypingMethod::kClipboard || manner_.method == TypingMethod::kUnicode;
    layout_.text().pass(asText && !modifierHeld());
    return layout_;
}

void WindowsKeyboard::SendInput(std::span<const KeyRecord> records) {
    if (records.empty()) return;
    for (const KeyRecord& record : records) {
        if (manner_.method == TypingMethod::kKeys)
            add(record);
        else
            altKeypad_.feed(record);
    }
    send();
    if (manner_.confirmPause > 0 && confirms(records.back()))
        Sleep(static_cast<DWORD>(manner_.confirmPause));
}

void WindowsKeyboard::passKey(const KeyRecord& record) {
    if (layout_.text().take(record)) {
        if (manner_.method == TypingMethod::kUnicode)
            for (const char character : layout_.text().takeRun()) addCharacter(character);
        return;
    }
    if (PassedText::endedBy(record)) paste();
    add(record);
}

void WindowsKeyboard::passComposed(char character) {
    switch (manner_.method) {
        case TypingMethod::kClipboard: layout_.text().add(character); break;
        case TypingMethod::kKeypad: addKeypadCode(character); break;
        case TypingMethod::kUnicode:
        case TypingMethod::kKeys: addCharacter(character); break;
    }
}

void WindowsKeyboard::add(const KeyRecord& record) {
    batch_.push_back(inputOf(record));
    if (manner_.extendedKeys && isExtended(record))
        batch_.back().ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
}

void WindowsKeyboard::addCharacter(char character) {
    for (const wchar_t unit : wideFromAnsi({&character, 1}))
        for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wScan = unit;
            input.ki.dwFlags = KEYEVENTF_UNICODE | up;
            batch_.push_back(input);
        }
}

// Alt with 0 and the code of the ANSI code page, with real keys.
void WindowsKeyboard::addKeypadCode(char character) {
    const auto key = [&](std::uint16_t virtualKey, std::uint32_t up) {
        add({virtualKey, layout_.MapVirtualKeyExA(virtualKey), kKeyEventScanCode | up});
    };
    key(kVkMenu, 0);
    const auto code = static_cast<unsigned char>(character);
    for (const int digit : {0, code / 100, code / 10 % 10, code % 10})
        for (const std::uint32_t up : {std::uint32_t{0}, kKeyEventKeyUp})
            key(static_cast<std::uint16_t>(AltKeypad::kVkNumpad0 + digit), up);
    key(kVkMenu, kKeyEventKeyUp);
}

void WindowsKeyboard::send() {
    sender_.send(batch_, manner_.keyPause);
    batch_.clear();
}

// The text gathered so far, with Control+V; without that or the clipboard as characters.
void WindowsKeyboard::paste() {
    const std::string text = layout_.text().takeRun();
    if (text.empty() || sender_.refused()) return;
    send();
    layout_.text().pass(false);
    const std::int16_t v = layout_.VkKeyScanExA('v');
    if (!clipboard_) clipboard_ = std::make_unique<ClipboardPaste>();
    if (v == -1 || !clipboard_->offer(text)) {
        for (const char character : text) addCharacter(character);
        send();
        return;
    }
    const auto vKey = static_cast<std::uint16_t>(v & 0xFF);
    const KeyRecord control{kVkControl, layout_.MapVirtualKeyExA(kVkControl), kKeyEventScanCode};
    const KeyRecord letter{vKey, layout_.MapVirtualKeyExA(vKey), kKeyEventScanCode};
    for (const KeyRecord& record : {control, letter}) add(record);
    for (KeyRecord record : {letter, control}) {
        record.flags |= kKeyEventKeyUp;
        add(record);
    }
    send();
    static_cast<void>(clipboard_->awaitFetch(processOf(GetForegroundWindow())));
}

bool WindowsKeyboard::modifierHeld() const {
    return altKeypad_.holdsAlt() || sender_.isDown(VK_SHIFT) || sender_.isDown(VK_CONTROL) ||
           sender_.isDown(VK_MENU);
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

// The system's OEM code pages lack characters; what composes the code here need not.
unsigned char WindowsKeyboard::CharToOemA(char character) {
    if (manner_.method != TypingMethod::kKeys) return ansiToOem(character);
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
