#include "editor/windows/notes_view.h"

#include <QStringList>
#include <algorithm>

#include "platform/qt/qt_text.h"

namespace kalvo {

namespace {

// A layout that is short of room would cut lines off a label that wraps them.
class WholeLabel : public QLabel {
protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        setMinimumHeight(std::max(heightForWidth(width()), 0));
    }
};

}  // namespace

QLabel* makeNotes(const QString& name) {
    auto* const label = new WholeLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
    return label;
}

void showNotes(QLabel* label, const std::vector<std::string>& warnings,
               const std::vector<std::string>& remarks) {
    QStringList lines;
    for (const std::string& warning : warnings) lines << "⚠ " + toQString(warning);
    for (const std::string& remark : remarks) lines << toQString(remark);
    label->setText(lines.join('\n'));
    label->setMinimumHeight(std::max(label->heightForWidth(label->width()), 0));
    label->setVisible(!lines.empty());
}

}  // namespace kalvo
