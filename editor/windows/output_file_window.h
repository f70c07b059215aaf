// The dialog in which the file of a scenario is chosen.
#pragma once

#include <QString>

class QWidget;

namespace kalvo {

// What is said of the buttons that open it.
inline constexpr const char* kOutputFileTip = "Choisit le fichier, qui peut ne pas exister encore.";

// The file chosen, beginning at the one there is; empty where none was.
[[nodiscard]] QString chooseOutputFile(QWidget* owner, const QString& present);

}  // namespace kalvo
