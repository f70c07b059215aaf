// Quiet lines in a window: what the user should know and need not answer.
#pragma once

#include <QLabel>
#include <string>
#include <vector>

namespace kalvo {

// A label under its object name, hidden while there is nothing to say.
[[nodiscard]] QLabel* makeNotes(const QString& name);

// Shows French texts (code page 1252), one below the other; warnings come first, with a sign.
void showNotes(QLabel* label, const std::vector<std::string>& warnings,
               const std::vector<std::string>& remarks = {});

}  // namespace kalvo
