#include "platform/jet/jet_error.h"

#include <string>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

// About a file that its own program can save in a form that is read.
RuntimeError unreadable(std::string_view file, std::string_view what, std::string_view remedy) {
    return {error_number::kDataFormat, std::string("La base « "_ansi)
                                           .append(file)
                                           .append(" » "_ansi)
                                           .append(what)
                                           .append(" ; elle n'est pas reprise. "_ansi)
                                           .append(remedy)};
}

}  // namespace

RuntimeError jetDamaged(std::string_view file, std::string_view detail) {
    std::string text;
    text = "La base Jet « "_ansi;
    text.append(file).append(" » est endommagée ou illisible"_ansi);
    if (!detail.empty()) text.append(" : "_ansi).append(detail);
    return {error_number::kDataFormat, text.append("."_ansi)};
}

RuntimeError jetEnciphered(std::string_view file) {
    return unreadable(file, "est chiffrée"_ansi,
                      "Déchiffrez-la avec le programme qui l'a créée, puis recommencez."_ansi);
}

RuntimeError jetPassword(std::string_view file) {
    return unreadable(
        file, "est protégée par un mot de passe"_ansi,
        "Retirez le mot de passe avec le programme qui l'a créée, puis recommencez."_ansi);
}

RuntimeError jetTooNew(std::string_view file) {
    return unreadable(
        file, "est d'un format plus récent que Jet 4 (.accdb)"_ansi,
        "Enregistrez-la au format Access 2000 ou 2002-2003 (.mdb), puis recommencez."_ansi);
}

RuntimeError jetTableMissing(std::string_view table) {
    return {
        error_number::kDataUnknownTable,
        std::string("La table « "_ansi).append(table).append(" » manque dans la base Jet."_ansi)};
}

RuntimeError jetColumnMissing(std::string_view table, std::string_view column) {
    return {error_number::kDataUnknownColumn, std::string("La colonne « "_ansi)
                                                  .append(column)
                                                  .append(" » manque dans la table « "_ansi)
                                                  .append(table)
                                                  .append(" » de la base Jet."_ansi)};
}

}  // namespace kalvo
