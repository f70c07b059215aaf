// The run-time errors of files as users know them, whatever the system calls them.
#pragma once

#include <string>
#include <string_view>

#include "text/ansi_text.h"
#include "text/runtime_error.h"

namespace kalvo {

// The French text of the number, with the path (code page 1252) the user knows the
// file by. Numbers without a text of their own are device errors.
[[nodiscard]] inline RuntimeError fileRuntimeError(int number, std::string_view path) {
    const auto text = [number]() -> std::string_view {
        switch (number) {
            case error_number::kFileNotFound: return "Fichier introuvable"_ansi;
            case error_number::kFileExists: return "Ce fichier existe déjà"_ansi;
            case error_number::kDiskFull: return "Disque plein"_ansi;
            case error_number::kTooManyFiles: return "Trop de fichiers"_ansi;
            case error_number::kPermissionDenied: return "Permission refusée"_ansi;
            case error_number::kPathAccess: return "Erreur d'accès au chemin ou au fichier"_ansi;
            case error_number::kPathNotFound: return "Chemin d'accès introuvable"_ansi;
            default: return "Erreur d'entrée/sortie de périphérique"_ansi;
        }
    };
    return {number, std::string(text()) + " : " + std::string(path)};
}

// For the path of an application folder (shown in code page 1252 as far as that goes)
// that the code page cannot hold: it would silently become the path of something else.
[[nodiscard]] inline RuntimeError unusablePathError(std::string_view shown) {
    return {error_number::kPathNotFound,
            std::string("Ce chemin contient des caractères que le programme ne peut pas "
                        "utiliser ; indiquez un autre dossier avec --app-dir : "_ansi)
                .append(shown)};
}

// For an application folder that cannot be made.
[[nodiscard]] inline RuntimeError folderNotMadeError(std::string_view path) {
    return {error_number::kPathAccess,
            std::string("Impossible de créer le dossier : "_ansi).append(path)};
}

}  // namespace kalvo
