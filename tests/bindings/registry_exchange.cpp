// registry_exchange write|check: sets values in the registry of the system it was built for,
// or checks that they are what "write" sets. Run on both systems over the same registry.
#include <array>
#include <cstdio>
#include <string_view>

#include "settings/settings_store.h"
#include "tests/support/system_bindings.h"
#include "text/ansi_text.h"

namespace {

using namespace kalvo;

struct Setting {
    std::string_view name, text;
};

constexpr auto kSettings = std::to_array<Setting>({
    {"RacScenChx", "Entrée \"stock\" C:\\x €"_ansi},
    {"RacCde", ""},
    {"RacInvent", " Inventaire "},
    {"SepDec", ","},
});

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    testing::SystemRegistry registry;
    int failures = 0;
    for (const auto& [name, text] : kSettings) {
        if (std::string_view(argv[1]) == "write") writeSetting(registry, name, text);
        const std::string found = readSetting(registry, name);
        if (found == text) continue;
        ++failures;
        std::printf("FAIL %s: <%s>\n", toUtf8(name).c_str(), toUtf8(found).c_str());
    }
    return failures > 0 ? 1 : 0;
}
