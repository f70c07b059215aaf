// The tab "Connexion": the scenarios in use and the decimal separator.
#pragma once

#include <QWidget>

#include "editor/settings_context.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace kalvo {

class ConnectionPage : public QWidget {
public:
    explicit ConnectionPage(const SettingsContext& context);

    // Shows what the controllers hold.
    void refresh();
    // Says that "Valider" is still to be pressed here.
    void showApplyDue();

private:
    [[nodiscard]] RowList namesWithNone(const std::string& chosen) const;

    const SettingsContext& context_;
    QComboBox* CboChoix;
    QComboBox* CboInvent;
    QComboBox* CboCde;
    QLineEdit* txtSep;
    QLabel* LblSuite;
};

}  // namespace kalvo
