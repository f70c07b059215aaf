#include "editor/windows/key_picker_window.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "editor/windows/row_list_view.h"

namespace kalvo {

KeyPickerWindow::KeyPickerWindow(QWidget* owner, const SettingsContext& context,
                                 std::function<void()> closeSteps)
    : QWidget(owner, Qt::Window), context_(context), closeSteps_(std::move(closeSteps)) {
    setObjectName("FrmTouches");
    setWindowTitle("Touches");
    setAttribute(Qt::WA_QuitOnClose, false);
    LstTouches = new QListWidget;
    LstTouches->setObjectName("LstTouches");
    LstTouches->setToolTip(
        "Un double clic (ou Entrée) ajoute l'élément au scénario, ou le met à la place de l'action "
        "sélectionnée.");
    onEnter(LstTouches, [this](int row) {
        context_.act([&] {
            context_.actions.pick(context_.actions.LstTouches.at(static_cast<std::size_t>(row)));
        });
    });
    (new QVBoxLayout(this))->addWidget(LstTouches);
    new QShortcut(Qt::Key_Escape, this, [this] { close(); });
}

void KeyPickerWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    closeSteps_();
}

void KeyPickerWindow::refresh() {
    const int row = std::min(LstTouches->currentRow(),
                             static_cast<int>(context_.actions.LstTouches.size()) - 1);
    showRows(LstTouches, {context_.actions.LstTouches, row});
}

}  // namespace kalvo
