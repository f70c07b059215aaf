// The dialog FrmChoixCom: another port in place of the one that cannot be opened.
#pragma once

#include <QDialog>
#include <QString>
#include <string_view>
#include <vector>

#include "platform/profile_files.h"
#include "platform/serial_port.h"

class QComboBox;

namespace kalvo {

// exec() ends with Accepted once the choice is stored.
class PortChoiceWindow : public QDialog {
public:
    // `devices` are those behind port 1, 2, ..., empty where there is none; `current` is
    // the number of the port that was tried.
    PortChoiceWindow(ProfileFiles& profiles, std::string_view applicationFolder,
                     const SerialPort& port, const std::vector<std::string>& devices, int current);

private:
    QComboBox* CboChoix;
};

}  // namespace kalvo
