#include "platform/jet/jet_error.h"
#include "platform/jet/jet_tables.h"
#include "platform/sqlite/database_path.h"
#include "text/ansi_text.h"

namespace kalvo {

JetTables readJetTables(const std::filesystem::path& file, std::chrono::milliseconds /*limit*/) {
    throw jetDamaged(shownName(file),
                     "l'import des bases Jet n'est pas disponible sur ce système"_ansi);
}

}  // namespace kalvo
