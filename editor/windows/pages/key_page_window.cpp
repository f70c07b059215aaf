#include "editor/windows/pages/key_page_window.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QToolBar>
#include <QVBoxLayout>
#include <cstddef>

#include "editor/keys/key_listing.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/tool_bar.h"

namespace kalvo {

namespace {

// What a key types, in words where there are few.
QString typedKeys(const std::string& script) {
    QStringList words;
    for (const std::string& row : listKeys(script, 0, 3)) words << toQString(row);
    return words.isEmpty() ? "(rien)" : words.join(", ");
}

}  // namespace

KeyPage::KeyPage(const SettingsContext& context, const KeyPageNames& names, KeyLabels& keys)
    : context_(context), keys_(keys) {
    auto* const bar = makeToolBar(
        names.toolBar, {{"Valider",
                         "valider",
                         "Enregistre les noms de ces touches et ferme la fenêtre (Entrée).",
                         {Qt::Key_Return, Qt::Key_Enter, Qt::ALT | Qt::Key_V},
                         [this] { save(); }},
                        {"Fermer",
                         "fermer",
                         "Ferme la fenêtre sans rien enregistrer (Échap).",
                         {Qt::Key_Escape, Qt::ALT | Qt::Key_F},
                         context_.close}});
    auto* const table = new QWidget;
    auto* const grid = new QGridLayout(table);
    const int count = static_cast<int>(keys.boxes().size());
    const int half = (count + 1) / 2;
    for (int index = 0; index < count; ++index) {
        const KeyBox& key = keys.boxes()[static_cast<std::size_t>(index)];
        auto* const label = new QLabel(typedKeys(key.types));
        label->setObjectName(names.label + QString::number(index));
        auto* const box = new QLineEdit(toQString(key.label));
        box->setObjectName(names.box + QString::number(index));
        box->setToolTip(
            "Le nom de cette touche, entre accolades, dans la liste des touches d'un scénario.");
        box->setCursorPosition(0);
        label->setBuddy(box);
        connect(box, &QLineEdit::textChanged, this, [this, index](const QString& text) {
            keys_.setLabel(static_cast<std::size_t>(index), fromQString(text));
        });
        const int column = index < half ? 0 : 2;
        grid->addWidget(label, index % half, column);
        grid->addWidget(box, index % half, column + 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(half, 1);
    auto* const area = new QScrollArea;
    area->setWidget(table);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addWidget(area, 1);
}

void KeyPage::save() {
    context_.act([this] {
        if (keys_.store()) context_.close();
    });
}

}  // namespace kalvo
