// The key tables of the settings window: the labels of Touche.ini.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"

namespace kalvo {

// One box of a key table.
struct KeyBox {
    std::string label;  // what the box shows and the user changes
    std::string types;  // the key script it stands for, shown beside the box
};

// Both tables as the boxes show them.
struct KeyTables {
    std::vector<KeyBox> keys;       // particular keys, 0 to 14
    std::vector<KeyBox> systemKey;  // system keys, 0 to 22
};

// A key's name as the picker and the steps have it: the label of its entry, without its
// braces.
[[nodiscard]] std::string keyName(std::string_view entry);

[[nodiscard]] KeyTables RemplirTouches(ProfileFiles& profiles, std::string_view applicationFolder);

// Writes the labels of a section in order, each with the code its entry has in
// the file, so that a renamed key goes on typing what it typed.
void saveKeyLabels(ProfileFiles& profiles, std::string_view applicationFolder,
                   std::string_view section, const std::vector<std::string>& labels);

}  // namespace kalvo
