// The key picker FrmTouches.
#pragma once

#include <QWidget>

#include "editor/settings_context.h"

class QListWidget;

namespace kalvo {

class KeyPickerWindow : public QWidget {
public:
    // `closeSteps` closes all windows of the steps.
    KeyPickerWindow(QWidget* owner, const SettingsContext& context,
                    std::function<void()> closeSteps);

    // Shows what the controllers hold.
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    const SettingsContext& context_;
    std::function<void()> closeSteps_;
    QListWidget* LstTouches;
};

}  // namespace kalvo
