#include "platform/windows/autostart.h"

#include <windows.h>

#include <array>
#include <filesystem>

#include "platform/windows/wide_text.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

constexpr const wchar_t* kRunKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const wchar_t* kValue = L"KALVO Horizon";

std::wstring quoted(const std::wstring& argument) { return L"\"" + argument + L"\""; }

std::wstring command(const std::optional<std::string>& appDir) {
    std::array<wchar_t, 32768> executable{};
    GetModuleFileNameW(nullptr, executable.data(), static_cast<DWORD>(executable.size()));
    // The desktop program, if this is the one of the console beside it.
    std::wstring text =
        quoted(std::filesystem::path(executable.data()).replace_extension(L".exe").wstring());
    if (appDir)
        text += L" --app-dir " + quoted(std::filesystem::absolute(wideFromUtf8(*appDir)).wstring());
    return text;
}

}  // namespace

void writeRunValue(bool on, const std::optional<std::string>& appDir) {
    LSTATUS status = ERROR_SUCCESS;
    if (on) {
        const std::wstring text = command(appDir);
        status = RegSetKeyValueW(HKEY_CURRENT_USER, kRunKey, kValue, REG_SZ, text.c_str(),
                                 static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    } else {
        status = RegDeleteKeyValueW(HKEY_CURRENT_USER, kRunKey, kValue);
        if (status == ERROR_FILE_NOT_FOUND) status = ERROR_SUCCESS;
    }
    if (status != ERROR_SUCCESS)
        throw RuntimeError(error_number::kPathAccess,
                           std::string("Impossible de modifier la base de registre"_ansi));
}

}  // namespace kalvo
