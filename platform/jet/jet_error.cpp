#include "platform/jet/jet_error.h"

#include <string>

#include "text/ansi_text.h"

namespace kalvo {

RuntimeError jetDamaged(std::string_view file, std::string_view detail) {
    std::string text;
    text = "La base Jet « "_ansi;
    text.append(file).append(" » est endommagée ou illisible"_ansi);
    if (!detail.empty()) text.append(" : "_ansi).append(detail);
    return {error_number::kDataFormat, text.append("."_ansi)};
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
