#include "platform/windows/multidll_library.h"

#include <windows.h>

#include <type_traits>
#include <utility>

#include "platform/multidll_functions.h"
#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

constexpr const wchar_t* kLibrary = L"Multidll.dll";

struct Unload {
    void operator()(HMODULE library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, Unload>;

// Keeps the library of its functions loaded.
class LoadedMultidll : public MultidllFunctions {
public:
    explicit LoadedMultidll(Library library)
        : MultidllFunctions(
              [&](const char* name) {
                  return reinterpret_cast<void*>(GetProcAddress(library.get(), name));
              },
              [](std::string_view path) { return std::string(path); }),
          library_(std::move(library)) {}

private:
    Library library_;
};

}  // namespace

std::unique_ptr<Multidll> findMultidllLibrary() {
    // Looks beside the program first.
    std::wstring path(32768, L'\0');
    const DWORD length = SearchPathW(nullptr, kLibrary, nullptr, static_cast<DWORD>(path.size()),
                                     path.data(), nullptr);
    if (length == 0 || length >= path.size()) return nullptr;
    path.resize(length);
    return loadMultidllLibrary(path);
}

std::unique_ptr<Multidll> loadMultidllLibrary(const std::wstring& path) {
    // What it needs itself is looked for beside it.
    Library library(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (library != nullptr) return std::make_unique<LoadedMultidll>(std::move(library));
    const DWORD error = GetLastError();
    if (error == ERROR_BAD_EXE_FORMAT) throw otherBitness(ansiFromWide(path));
    throw notLoaded(ansiFromWide(path), "erreur " + std::to_string(error) + ".");
}

}  // namespace kalvo
