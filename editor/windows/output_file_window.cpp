#include "editor/windows/output_file_window.h"

#include <QFileDialog>

namespace kalvo {

QString chooseOutputFile(QWidget* owner, const QString& present) {
    return QFileDialog::getSaveFileName(owner, "Fichier de récupération", present,
                                        "Fichiers texte (*.txt);;Tous les fichiers (*)", nullptr,
                                        QFileDialog::DontConfirmOverwrite);
}

}  // namespace kalvo
