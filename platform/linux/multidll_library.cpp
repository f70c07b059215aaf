#include "platform/linux/multidll_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/linux/native_path.h"
#include "platform/shared/multidll_functions.h"
#include "text/ansi_text.h"

namespace kalvo {

namespace {

constexpr std::string_view kLibrary = "libMultidll.so";

struct Unload {
    void operator()(void* library) const { dlclose(library); }
};
using Library = std::unique_ptr<void, Unload>;

// Keeps the library of its functions loaded.
class LoadedMultidll : public MultidllFunctions {
public:
    explicit LoadedMultidll(Library library)
        : MultidllFunctions([&](const char* name) { return dlsym(library.get(), name); },
                            nativePath),
          library_(std::move(library)) {}

private:
    Library library_;
};

// The loader's reason is in the session's language; the class of the file is not.
RuntimeError loadingError(const std::string& path, std::string_view reason) {
    if (reason.find("ELFCLASS") != std::string_view::npos) return otherBitness(fromUtf8(path));
    return notLoaded(fromUtf8(path), fromUtf8(reason));
}

}  // namespace

// Never by the loader's own search: that would take a file from wherever it finds one.
std::unique_ptr<Multidll> findMultidllLibrary(const std::string& named) {
    if (!named.empty()) return loadMultidllLibrary(std::filesystem::absolute(named).string());
    std::error_code unknown;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    const auto beside = program.parent_path() / kLibrary;
    if (unknown || !std::filesystem::exists(beside, unknown)) return nullptr;
    return loadMultidllLibrary(beside);
}

std::unique_ptr<Multidll> loadMultidllLibrary(const std::string& path) {
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw loadingError(path, dlerror());
    return std::make_unique<LoadedMultidll>(Library(library));
}

}  // namespace kalvo
