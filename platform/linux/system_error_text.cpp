#include "platform/linux/system_error_text.h"

#include <cerrno>
#include <string>

#include "platform/ansi_text.h"

namespace kalvo {

namespace {

constexpr int kFileExists = 58;
constexpr int kTooManyFiles = 67;

int numberOf(int systemError, int missing) {
    switch (systemError) {
        case ENOENT: return missing;
        case ENOTDIR:
        case ENAMETOOLONG: return error_number::kPathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY: return error_number::kPermissionDenied;
        case EISDIR:
        case ENOTEMPTY:
        case ELOOP:
        case EINVAL:
        case ENXIO: return error_number::kPathAccess;
        case EEXIST: return kFileExists;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return error_number::kDiskFull;
        case EMFILE:
        case ENFILE: return kTooManyFiles;
        default: return error_number::kDeviceIo;
    }
}

std::string_view textOf(int number) {
    switch (number) {
        case error_number::kFileNotFound: return "Fichier introuvable"_ansi;
        case kFileExists: return "Ce fichier existe déjà"_ansi;
        case error_number::kDiskFull: return "Disque plein"_ansi;
        case kTooManyFiles: return "Trop de fichiers"_ansi;
        case error_number::kPermissionDenied: return "Permission refusée"_ansi;
        case error_number::kPathAccess: return "Erreur d'accès au chemin ou au fichier"_ansi;
        case error_number::kPathNotFound: return "Chemin d'accès introuvable"_ansi;
        default: return "Erreur d'entrée/sortie de périphérique"_ansi;
    }
}

}  // namespace

RuntimeError fileError(int systemError, std::string_view path, int missing) {
    const int number = numberOf(systemError, missing);
    return {number, std::string(textOf(number)) + " : " + std::string(path)};
}

}  // namespace kalvo
