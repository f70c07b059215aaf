#include "editor/windows/notes_view.h"

#include <QStringList>

#include "platform/qt/qt_text.h"

namespace kalvo {

QLabel* makeNotes(const QString& name) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
    return label;
}

void showNotes(QLabel* label, const std::vector<std::string>& notes) {
    QStringList lines;
    for (const std::string& note : notes) lines << "⚠ " + toQString(note);
    label->setText(lines.join('\n'));
    label->setVisible(!notes.empty());
}

}  // namespace kalvo
