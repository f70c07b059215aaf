#include "platform/sqlite/sqlite_error.h"

#include <string>

#include "text/ansi_text.h"

namespace kalvo {

namespace {

RuntimeError failure(int number, std::string_view before, std::string_view subject = {},
                     std::string_view after = {}) {
    return {number, std::string(before).append(subject).append(after)};
}

// The text behind `mark` in an engine message; empty when the mark is not there.
std::string textBehind(std::string_view message, std::string_view mark) {
    const auto at = message.find(mark);
    return at == std::string_view::npos ? std::string{}
                                        : fromUtf8(message.substr(at + mark.size()));
}

// The engine has one code for whatever is wrong with a statement; what exactly
// only its message says.
RuntimeError statementError(std::string_view message, std::string_view statement) {
    if (const std::string table = textBehind(message, "no such table: "); !table.empty())
        return failure(error_number::kDataUnknownTable, "La table « "_ansi, table,
                       " » est introuvable dans la base de données."_ansi);
    for (const std::string_view mark : {"no such column: ", "has no column named "})
        if (const std::string column = textBehind(message, mark); !column.empty())
            return failure(error_number::kDataMissingParameter, "Trop peu de paramètres : « "_ansi,
                           column, " » n'est pas une colonne connue."_ansi);
    return syntaxError(statement);
}

}  // namespace

RuntimeError syntaxError(std::string_view statement) {
    return failure(error_number::kDataSyntax, "Erreur de syntaxe dans l'instruction « "_ansi,
                   statement, " »."_ansi);
}

RuntimeError formatError(std::string_view file) {
    return failure(error_number::kDataFormat, "Format de base de données non reconnu : « "_ansi,
                   file, " »."_ansi);
}

RuntimeError fileMissingError(std::string_view file) {
    return failure(error_number::kDataFileNotFound, "Fichier introuvable : « "_ansi, file,
                   " »."_ansi);
}

RuntimeError diskError(std::string_view file) {
    return failure(error_number::kDataDisk, "Erreur de disque ou disque plein en écrivant « "_ansi,
                   file, " »."_ansi);
}

RuntimeError engineError(sqlite3* connection, std::string_view statement) {
    switch (sqlite3_errcode(connection) & 0xFF) {
        case SQLITE_ERROR: return statementError(sqlite3_errmsg(connection), statement);
        case SQLITE_AUTH:
        case SQLITE_RANGE:
        case SQLITE_TOOBIG: return syntaxError(statement);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return failure(error_number::kDataLocked,
                           "La base de données est verrouillée par un autre programme."_ansi);
        case SQLITE_READONLY:
            return failure(
                error_number::kDataReadOnly,
                "Mise à jour impossible : la base de données est en lecture seule."_ansi);
        case SQLITE_CONSTRAINT:
            return failure(error_number::kDataDuplicate,
                           "Modification refusée : elle créerait une valeur en double."_ansi);
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return failure(error_number::kDataFormat,
                           "Format de base de données non reconnu, ou base endommagée."_ansi);
        default:
            return failure(error_number::kDataDisk, "Erreur de disque ou disque plein (code "_ansi,
                           std::to_string(sqlite3_extended_errcode(connection)), ")."_ansi);
    }
}

}  // namespace kalvo
