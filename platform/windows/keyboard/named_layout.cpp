#include "platform/windows/keyboard/named_layout.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/windows/keyboard/windows_keyboard.h"
#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

namespace {

struct Layout {
    std::string_view name;
    std::string_view identifier;
};

constexpr auto kLayouts = std::to_array<Layout>({
    {"us", "00000409"},
    {"gb", "00000809"},
    {"fr", "0000040c"},
    {"be", "0000080c"},
    {"ca", "00001009"},
    {"ch(fr)", "0000100c"},
    {"ch", "00000807"},
    {"de", "00000407"},
    {"es", "0000040a"},
    {"it", "00000410"},
});

std::string identifierOf(std::string_view name) {
    for (const Layout& layout : kLayouts)
        if (layout.name == name) return std::string(layout.identifier);
    return std::string(name);
}

std::vector<HKL> loadedLayouts() {
    std::vector<HKL> loaded(static_cast<std::size_t>(GetKeyboardLayoutList(0, nullptr)));
    GetKeyboardLayoutList(static_cast<int>(loaded.size()), loaded.data());
    return loaded;
}

// The system answers for layouts that are loaded; one that the user has not chosen
// himself is not left behind in his list.
class LoadedLayout : public WindowsLayout {
public:
    LoadedLayout(HKL layout, bool unload)
        : WindowsLayout(layout), layout_(layout), unload_(unload) {}
    LoadedLayout(const LoadedLayout&) = delete;
    LoadedLayout& operator=(const LoadedLayout&) = delete;
    ~LoadedLayout() override {
        if (unload_) UnloadKeyboardLayout(layout_);
    }

private:
    HKL layout_;
    bool unload_;
};

}  // namespace

std::unique_ptr<KeyboardLayout> makeNamedLayout(std::string_view name) {
    const std::string identifier = identifierOf(name);
    // Anything else than eight digits would give the standard layout.
    const bool known = identifier.size() == 8 &&
                       identifier.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    const std::vector<HKL> before = loadedLayouts();
    const HKL layout = known ? LoadKeyboardLayoutA(identifier.c_str(), KLF_NOTELLSHELL) : nullptr;
    if (layout == nullptr)
        throw RuntimeError(error_number::kInvalidCall,
                           std::string("Disposition de clavier inconnue : "_ansi).append(name));
    return std::make_unique<LoadedLayout>(
        layout, std::find(before.begin(), before.end(), layout) == before.end());
}

}  // namespace kalvo
