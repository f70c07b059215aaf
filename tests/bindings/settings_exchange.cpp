// settings_exchange write|check FOLDER: sets values in Echange.ini of the folder and in
// the registry through the bindings of the system it was built for, or checks that they
// are what "write" sets. Run on both systems over the same files.
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "settings/settings_store.h"
#include "tests/support/system_bindings.h"
#include "text/ansi_text.h"

namespace {

using namespace kalvo;

struct Value {
    std::string_view section, key, written, read;
};

// Blanks around names and values go, those between quotes stay.
constexpr Value kValues[] = {
    {"Port_série"_ansi, "Vitesse", " 9600", "9600"},
    {"Port_série"_ansi, "Bit d'arrêt"_ansi, " 1.5", "1.5"},
    {" Port_série "_ansi, " Port ", "3 ", "3"},
    {"Touches", " 0", "{Entrée}@4"_ansi, "{Entrée}@4"_ansi},
    {"Touches", "1", "\" a b \"", " a b "},
    {"Touches", "2", "' '", " "},
    {"Touches", "3", "\"'x'\"", "'x'"},
    {"Touches", "4", "a=\"b\"", "a=\"b\""},
    {"Touches", "5", "\"open", "\"open"},
    {"Touches", "6", "v ; c", "v ; c"},
    {"Touches", "7", "=x=", "=x="},
    {"Touches", "8", "œ€ÿ"_ansi, "œ€ÿ"_ansi},
    {"Ligne", "Champs", "&CODE@{TAB}@&QTY@{ENTER}@", "&CODE@{TAB}@&QTY@{ENTER}@"},
    {"Fichier", "Chemin", "C:\\TEMP\\été.txt"_ansi, "C:\\TEMP\\été.txt"_ansi},
};

struct Setting {
    std::string_view name, text;
};

constexpr Setting kSettings[] = {
    {"RacScenChx", "Entrée \"stock\" C:\\x €"_ansi},
    {"RacCde", ""},
    {"RacInvent", " Inventaire "},
    {"SepDec", ","},
};

int failures = 0;

void expect(std::string_view what, std::string_view expected, std::string_view actual) {
    if (expected == actual) return;
    ++failures;
    std::printf("FAIL %s: expected <%s>, found <%s>\n", toUtf8(what).c_str(),
                toUtf8(expected).c_str(), toUtf8(actual).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    testing::SystemProfiles profiles;
    testing::SystemRegistry registry;
    const std::string file = std::string(argv[2]) + kPathSeparator + "Echange.ini";
    const bool writing = std::string_view(argv[1]) == "write";
    for (const auto& [section, key, written, read] : kValues)
        if (!writing)
            expect(key, read, profiles.read(file, section, key));
        else if (!profiles.write(file, section, key, written))
            expect(key, "written", "not written");
    for (const auto& [name, text] : kSettings)
        writing ? writeSetting(registry, name, text)
                : expect(name, text, readSetting(registry, name));
    return failures > 0 ? 1 : 0;
}
