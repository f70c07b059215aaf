#include "editor/windows/steps/key_picker_pane.h"

#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/windows/row_list_view.h"

namespace kalvo {

namespace {

constexpr int kLeastPickerWidth = 130;

}  // namespace

KeyPickerPane::KeyPickerPane(const SettingsContext& context) : context_(context) {
    setObjectName("FrmTouches");
    setMinimumWidth(kLeastPickerWidth);
    LstTouches = new RowListView(
        "LstTouches",
        "Un double clic (ou Entrée) ajoute l'élément au scénario, ou le met à la place de l'action "
        "sélectionnée.");
    LstTouches->onEnter = [this](int row) {
        context_.act([&] {
            context_.actions.pick(context_.actions.LstTouches.at(static_cast<std::size_t>(row)));
        });
    };
    setFocusProxy(LstTouches);
    auto* const label = new QLabel("T&ouches :");
    label->setBuddy(LstTouches);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(LstTouches);
}

void KeyPickerPane::refresh() {
    const auto& keys = context_.actions.LstTouches;
    LstTouches->showRows(plainRows(keys),
                         std::min(LstTouches->currentRow(), static_cast<int>(keys.size()) - 1));
}

}  // namespace kalvo
