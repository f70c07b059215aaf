#include "platform/windows/multidll/multidll_library.h"

#include <windows.h>

#include <type_traits>
#include <utility>

#include "platform/shared/multidll_functions.h"
#include "platform/windows/wide_text.h"

namespace kalvo {

namespace {

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

std::unique_ptr<Multidll> loadMultidllLibrary(const std::wstring& path) {
    // What it needs itself comes from beside it or from the system, never from the folder
    // the program happens to run in.
    Library library(
        LoadLibraryExW(path.c_str(), nullptr,
                       LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    if (library != nullptr) return std::make_unique<LoadedMultidll>(std::move(library));
    const DWORD error = GetLastError();
    if (error == ERROR_BAD_EXE_FORMAT) throw otherBitness(ansiFromWide(path));
    throw notLoaded(ansiFromWide(path), "erreur " + std::to_string(error) + ".");
}

}  // namespace kalvo
