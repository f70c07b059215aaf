// How the file dialogs of transfers begin.
#pragma once

#include <string>
#include <string_view>

namespace kalvo {

// What they offer.
inline constexpr std::string_view kFileFilter =
    "Fichier texte (*.TXT)|*.txt|Tous les fichiers (*.*)|*.*";

// Where one starts that has no folder of its own: "\TEMP" of the drive of the
// application folder; the system's temporary folder where there are no drives.
[[nodiscard]] std::string temporaryFolder(std::string_view applicationFolder);

}  // namespace kalvo
