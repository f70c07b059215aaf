#include "platform/windows/keyboard/session_access.h"

#include <windows.h>
// Behind windows.h, which it needs.
#include <wtsapi32.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/windows/file_handle.h"
#include "platform/windows/keyboard/front_window.h"

namespace kalvo {

namespace {

constexpr std::uint32_t kTimeBetweenLooks = 250;  // milliseconds

std::wstring nameOf(HDESK desktop) {
    std::array<wchar_t, 256> name{};
    DWORD size = 0;
    if (GetUserObjectInformationW(desktop, UOI_NAME, name.data(), sizeof(name), &size) == 0)
        return {};
    return name.data();
}

// The lock screen and the prompts for an administrator are on desktops of their own, which
// either cannot be opened or have another name.
bool ourDesktopTakesInput() {
    const HDESK input = OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS);
    if (input == nullptr) return false;
    const bool ours = nameOf(input) == nameOf(GetThreadDesktop(GetCurrentThreadId()));
    CloseDesktop(input);
    return ours;
}

// Of a session that does not say, the desktop alone counts.
bool sessionActive() {
    LPWSTR answer = nullptr;
    DWORD size = 0;
    if (WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION, WTSConnectState,
                                    &answer, &size) == 0 ||
        answer == nullptr)
        return true;
    const bool active = *reinterpret_cast<const WTS_CONNECTSTATE_CLASS*>(answer) == WTSActive;
    WTSFreeMemory(answer);
    return active;
}

std::optional<DWORD> integrityOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (OpenProcessToken(process, TOKEN_QUERY, &opened) == 0) return std::nullopt;
    const FileHandle token(opened);
    alignas(TOKEN_MANDATORY_LABEL) std::array<std::byte, 128> buffer;
    DWORD size = 0;
    if (GetTokenInformation(token.get(), TokenIntegrityLevel, buffer.data(),
                            static_cast<DWORD>(buffer.size()), &size) == 0)
        return std::nullopt;
    const PSID sid = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer.data())->Label.Sid;
    return *GetSidSubAuthority(sid, DWORD{*GetSidSubAuthorityCount(sid)} - 1);
}

bool ranksAboveUs(DWORD process) {
    const auto ours = integrityOf(GetCurrentProcess());
    if (!ours) return false;
    const FileHandle opened(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
    const auto theirs = opened ? integrityOf(opened.get()) : std::nullopt;
    return !theirs || *theirs > *ours;
}

}  // namespace

bool SessionAccess::open() {
    const std::uint32_t now = steadyTicks();
    if (looked_ && now - lastLook_ < kTimeBetweenLooks) return open_;
    looked_ = true;
    lastLook_ = now;
    open_ = ourDesktopTakesInput() && sessionActive();
    return open_;
}

bool SessionAccess::targetAboveUs() {
    const DWORD process = processOf(GetForegroundWindow());
    if (process == 0) return false;
    if (process != process_) {
        process_ = process;
        above_ = ranksAboveUs(process);
    }
    return above_;
}

}  // namespace kalvo
