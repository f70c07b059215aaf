// The tab "Scénario": the list of scenarios and the properties of one.
#pragma once

#include <QWidget>

#include "editor/settings_context.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace kalvo {

class RowListView;

class ScenarioPage : public QWidget {
public:
    explicit ScenarioPage(const SettingsContext& context);

    // Shows what the controllers hold.
    void refresh();
    // Stores a path that is still being edited.
    void finishEditing();

private:
    [[nodiscard]] QWidget* listSide();
    [[nodiscard]] QWidget* propertiesSide();
    [[nodiscard]] QGroupBox* pathFrame();
    void choosePath();

    const SettingsContext& context_;
    RowListView* LstScen;
    QLabel *LblNomScen, *LblType;
    QLineEdit *TxtNomScen, *TxtChemin;
    QComboBox* CboType;
    QCheckBox *ChcPartiel, *chkIncrement;
    QGroupBox* FraChemin;
};

}  // namespace kalvo
