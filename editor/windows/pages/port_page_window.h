// The tab "Propriétés": port, line settings and terminal type.
#pragma once

#include <QTimer>
#include <QWidget>
#include <string>
#include <vector>

#include "editor/settings_context.h"

class QCheckBox;
class QComboBox;

namespace kalvo {

class PortPage : public QWidget {
public:
    explicit PortPage(const SettingsContext& context);

    // Shows what the controllers hold.
    void refresh();

private:
    [[nodiscard]] QWidget* leftColumn();
    [[nodiscard]] QWidget* rightColumn();
    void followPlugging();
    void showPorts();

    const SettingsContext& context_;
    std::vector<std::string> devices_;
    QTimer plugging_;
    QComboBox *CboPort, *CboVitesse, *CboProtocol, *CboDonnées, *CboParité, *CboArret, *CboFlux;
    QCheckBox* ChDatalogic;
};

}  // namespace kalvo
