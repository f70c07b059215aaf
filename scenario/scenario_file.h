// The compiled scenario file (ScenarioFile): its sections and keys.
//
//   Type/Type  Boucle/Index  Depart/Index  Trame/Trame  Partiel/Choix  Partiel/Nbr
//   Mat/Specif  Fichier/Chemin (file scenarios only)  Ligne/Champs
//
// Compilation writes the number of sub-frames as Partiel/Nbr while frame processing
// reads Trame/Nbr: only a file completed by hand reassembles partial frames.
#pragma once

#include <string_view>

namespace kalvo::scenario_file {

struct Entry {
    std::string_view section;
    std::string_view key;
};

inline constexpr Entry kType{"Type", "Type"};
inline constexpr Entry kBoucle{"Boucle", "Index"};
inline constexpr Entry kDepart{"Depart", "Index"};
inline constexpr Entry kSubFrames{"Trame", "Trame"};
inline constexpr Entry kSubFrameCount{"Trame", "Nbr"};
inline constexpr Entry kPartialMode{"Partiel", "Choix"};
inline constexpr Entry kCompiledCount{"Partiel", "Nbr"};
inline constexpr Entry kSpecif{"Mat", "Specif"};
inline constexpr Entry kChemin{"Fichier", "Chemin"};
inline constexpr Entry kActionLine{"Ligne", "Champs"};

// Ends every item of a list in one value.
inline constexpr std::string_view kItemEnd = "@";

}  // namespace kalvo::scenario_file
