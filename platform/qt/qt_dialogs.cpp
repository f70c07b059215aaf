#include "platform/qt/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

QMessageBox::Icon boxIcon(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::kInformation: return QMessageBox::Information;
        case MessageIcon::kExclamation: return QMessageBox::Warning;
        case MessageIcon::kCritical: return QMessageBox::Critical;
        case MessageIcon::kQuestion: return QMessageBox::Question;
        case MessageIcon::kNone: break;
    }
    return QMessageBox::NoIcon;
}

void prepare(QMessageBox& box, std::string_view text, std::string_view title, MessageIcon icon) {
    box.setObjectName("frmMessage");
    box.setIcon(boxIcon(icon));
    box.setWindowTitle(toQString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(text).replace("\r\n", "\n"));
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
}

// Wide enough for the whole title beside the buttons of a title bar. The layout of an input
// dialog gives it the width of its parts, whatever is wanted of the dialog itself.
void showWholeTitle(const QInputDialog& dialog) {
    if (auto* const box = dialog.findChild<QLineEdit*>())
        box->setMinimumWidth(dialog.fontMetrics().horizontalAdvance(dialog.windowTitle()) * 2);
}

// "label|pattern|label|pattern" as "label (patterns)", with the patterns in both
// cases, because file names here may keep theirs.
QString toolkitFilter(const QString& filter) {
    const QStringList parts = filter.split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString label = parts[i].section(" (", 0, 0);
        const QString& pattern = parts[i + 1];
        const bool anyName = pattern == "*.*";
        const QString patterns =
            anyName ? QString("*") : pattern.toLower() + " " + pattern.toUpper();
        filters << label + " (" + patterns + ")";
    }
    return filters.join(";;");
}

}  // namespace

void QtDialogs::message(std::string_view text, std::string_view title, MessageIcon icon) {
    QMessageBox box(QApplication::activeWindow());
    prepare(box, text, title, icon);
    box.exec();
}

bool QtDialogs::confirm(std::string_view text, std::string_view title, MessageIcon icon) {
    QMessageBox box(QApplication::activeWindow());
    prepare(box, text, title, icon);
    const auto* const yes = box.addButton("&Oui", QMessageBox::YesRole);
    auto* const no = box.addButton("&Non", QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

std::optional<std::string> QtDialogs::inputBox(std::string_view prompt, std::string_view title,
                                               std::string_view defaultText) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setObjectName("frmSaisie");
    dialog.setWindowTitle(toQString(title));
    // The label belongs to the box: an "&" of the text would be its shortcut.
    dialog.setLabelText(toQString(prompt).replace("\r\n", "\n").replace("&", "&&"));
    dialog.setTextValue(toQString(defaultText));
    dialog.setOkButtonText("OK");
    dialog.setCancelButtonText("Annuler");
    showWholeTitle(dialog);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return fromQString(dialog.textValue());
}

std::string QtDialogs::openFile(std::string_view startFolder, std::string_view filter) {
    QFileDialog dialog(QApplication::activeWindow(), "Ouvrir", toQString(startFolder),
                       toolkitFilter(toQString(filter)));
    dialog.setObjectName("frmOuvrir");
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return fromQString(dialog.selectedFiles().constFirst());
}

std::string QtDialogs::saveFile(std::string_view name, std::string_view filter) {
    QFileDialog dialog(QApplication::activeWindow(), "Enregistrer", {},
                       toolkitFilter(toQString(filter)));
    dialog.setObjectName("frmEnregistrer");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(toQString(name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return fromQString(dialog.selectedFiles().constFirst());
}

void QtDialogs::beep() { QApplication::beep(); }

}  // namespace kalvo
